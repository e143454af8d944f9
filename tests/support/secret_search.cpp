// The forms of secrets, and the walk through files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/secret_search.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>

#include <cstring>

namespace tideloft::tests
{

namespace
{

constexpr qsizetype headSize = 4;

quint32 headAt(const char *bytes)
{
    quint32 head = 0;
    std::memcpy(&head, bytes, headSize);
    return head;
}

QByteArray wide(const QByteArray &ascii, bool lowByteFirst)
{
    QByteArray result;
    for (const char character : ascii) {
        if (!lowByteFirst)
            result += '\0';
        result += character;
        if (lowByteFirst)
            result += '\0';
    }
    return result;
}

QByteArray utf16(const QString &text, bool lowByteFirst)
{
    QByteArray result;
    for (const QChar unit : text) {
        const std::pair bytes{static_cast<char>(unit.cell()), static_cast<char>(unit.row())};
        result += lowByteFirst ? bytes.first : bytes.second;
        result += lowByteFirst ? bytes.second : bytes.first;
    }
    return result;
}

// What SECRET is with BEFORE bytes in front of it, without the characters that it shares with neighbours.
QByteArray base64Inside(const QByteArray &secret, qsizetype before, QByteArray::Base64Options alphabet)
{
    const qsizetype size = before + secret.size();
    const QByteArray all = (QByteArray(before, '\0') + secret).toBase64(alphabet);
    const qsizetype shared = before == 0 ? 0 : before + 1;
    const qsizetype whole = size / 3 * 4 + (size % 3); // the last characters of the rest are shared
    return all.mid(shared, whole - shared);
}

} // namespace

void SecretSearch::addNeedles(const QString &name, const QByteArray &form, qsizetype piece)
{
    const qsizetype size = qMin(piece, form.size());
    if (size < headSize)
        qFatal("%s is too short to look for", qPrintable(name));
    for (qsizetype at = 0; at + size <= form.size(); at += size) {
        const QByteArray bytes = form.mid(at, size);
        byHead[headAt(bytes.constData())].append({bytes, name});
    }
}

void SecretSearch::addTextForms(const QString &name, const QByteArray &ascii, qsizetype piece)
{
    addNeedles(name, ascii, piece);
    for (const bool lowByteFirst : {true, false})
        addNeedles(name, wide(ascii, lowByteFirst), 2 * piece);
}

void SecretSearch::addForms(const QString &name, const QByteArray &secret, qsizetype piece)
{
    if (!names.contains(name))
        names.append(name);
    addNeedles(name, secret, piece);
    addTextForms(name, secret.toHex(), piece);
    addTextForms(name, secret.toHex().toUpper(), piece);
    for (const auto alphabet : {QByteArray::Base64Encoding, QByteArray::Base64UrlEncoding}) {
        for (qsizetype before = 0; before < 3; ++before)
            addTextForms(name, base64Inside(secret, before, alphabet), piece);
    }
}

void SecretSearch::addText(const QString &name, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    addForms(name, bytes, bytes.size() * 8);
    for (const bool lowByteFirst : {true, false})
        addNeedles(name, utf16(text, lowByteFirst), text.size() * 2);
}

QStringList SecretSearch::foundIn(const QByteArray &haystack) const
{
    QSet<QString> found;
    for (qsizetype at = 0; at + headSize <= haystack.size(); ++at) {
        const auto needles = byHead.constFind(headAt(haystack.constData() + at));
        if (needles == byHead.constEnd())
            continue;
        for (const Needle &needle : *needles) {
            if (QByteArrayView(haystack).sliced(at).startsWith(needle.bytes))
                found.insert(needle.name);
        }
    }
    QStringList inOrder = names;
    inOrder.removeIf([&found](const QString &name) { return !found.contains(name); });
    return inOrder;
}

QStringList SecretSearch::foundBelow(const QString &directory) const
{
    QStringList found;
    QDirIterator files(directory, QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!QFileInfo(file).isFile())
            continue; // a socket or a pipe holds nothing
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s cannot be read", qPrintable(file.fileName()));
        for (const QString &name : foundIn(file.readAll()))
            found.append(QDir(directory).relativeFilePath(file.fileName()) + QStringLiteral(": ") + name);
    }
    found.sort();
    return found;
}

} // namespace tideloft::tests
