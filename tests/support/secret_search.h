// Looking for secrets in what a program wrote down, in every form in which it could have done so.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>

namespace tideloft::tests
{

/// Secrets by name. Each is looked for as its bytes, in hexadecimal and in Base64 wherever a group of Base64
/// begins, and these texts in 8 and in 16 bits, either byte first.
class SecretSearch
{
public:
    /// A password or a message, of at least 8 characters.
    void addText(const QString &name, const QString &text);
    /// A key that is found only as a whole.
    void addKey(const QString &name, const QByteArray &key) { addForms(name, key, key.size() * 8); }
    /// A key of which any 24 bytes or characters that stand together are found.
    void addLongKey(const QString &name, const QByteArray &key) { addForms(name, key, pieceSize); }

    /// The names of those that HAYSTACK holds, in order.
    [[nodiscard]] QStringList foundIn(const QByteArray &haystack) const;
    /// "path: name" for each that a file below DIRECTORY holds, paths relative to it. Links are not followed.
    [[nodiscard]] QStringList foundBelow(const QString &directory) const;

private:
    // Of a form that is cut into pieces of half a window, every window holds a piece whole.
    static constexpr qsizetype pieceSize = 12;
    struct Needle {
        QByteArray bytes;
        QString name;
    };

    void addForms(const QString &name, const QByteArray &secret, qsizetype piece);
    void addTextForms(const QString &name, const QByteArray &ascii, qsizetype piece);
    void addNeedles(const QString &name, const QByteArray &form, qsizetype piece);

    QHash<quint32, QList<Needle>> byHead; // under their first four bytes
    QStringList names;
};

} // namespace tideloft::tests
