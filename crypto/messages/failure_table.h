// Why messages did not open, each under the texts that it was sealed as.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace tideloft::crypto
{

/// The Base64 texts of an envelope that concern one device.
struct SealedTexts {
    QString text;
    QString iv;
    QString wrappedKey;
};

/// The key of a message in the table: the SHA-256 (FIPS 180-4) of its three texts and their lengths.
QByteArray digestOf(const SealedTexts &sealed);

/// A table of at most `mostFailures` messages; a full one forgets its oldest for a new one. It holds nothing
/// secret: digests of what the service has, and English words.
class FailureTable
{
public:
    explicit FailureTable(qsizetype mostFailures) : capacity(mostFailures) {}

    /// What was said when the message failed. Nothing if that is not known.
    [[nodiscard]] std::optional<QString> find(const QByteArray &digest) const;
    /// Keeps `error`. A message that is there already keeps its own.
    void insert(const QByteArray &digest, const QString &error);
    void clear();
    [[nodiscard]] qsizetype size() const { return errors.size(); }

private:
    qsizetype capacity;
    QHash<QByteArray, QString> errors;
    QList<QByteArray> digests; ///< in the order of their coming, the first at `oldest` once the table is full
    qsizetype oldest = 0;
};

} // namespace tideloft::crypto
