// Finding and keeping of failures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/failure_table.h"

#include <QCryptographicHash>

#include <utility>

namespace tideloft::crypto
{

namespace
{

void addText(QCryptographicHash &hash, const QString &text)
{
    const qsizetype size = text.size(); // else the end of one text could pass for the beginning of the next
    hash.addData(QByteArrayView(reinterpret_cast<const char *>(&size), sizeof size));
    hash.addData(QByteArrayView(reinterpret_cast<const char *>(text.utf16()),
                                size * static_cast<qsizetype>(sizeof(QChar))));
}

} // namespace

// The service chooses the texts, and a weak hash would let it make two messages with one digest. Then one
// message would get the failure of the other.
QByteArray digestOf(const SealedTexts &sealed)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &text : {sealed.wrappedKey, sealed.iv, sealed.text})
        addText(hash, text);
    return hash.result();
}

std::optional<QString> FailureTable::find(const QByteArray &digest) const
{
    const auto found = errors.constFind(digest);
    return found == errors.cend() ? std::nullopt : std::optional(*found);
}

void FailureTable::insert(const QByteArray &digest, const QString &error)
{
    if (errors.contains(digest))
        return;
    if (digests.size() < capacity) {
        digests.append(digest);
    } else {
        errors.remove(std::exchange(digests[oldest], digest));
        oldest = (oldest + 1) % capacity;
    }
    errors.insert(digest, error);
}

void FailureTable::clear()
{
    errors = {};
    digests = {};
    oldest = 0;
}

} // namespace tideloft::crypto
