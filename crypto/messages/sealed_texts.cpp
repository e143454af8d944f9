// Digests of texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/sealed_texts.h"

#include <openssl/sha.h>

namespace tideloft::crypto
{

namespace
{

QByteArrayView bytesOf(const QString &text)
{
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * qsizetype(sizeof(QChar))};
}

// The service chooses the texts. With a weak hash it could make two texts with one digest: a message would
// then open with the key of another, or get the failure of another.
QByteArray sha256(QByteArrayView bytes)
{
    QByteArray digest(SHA256_DIGEST_LENGTH, Qt::Uninitialized);
    const auto *begin = reinterpret_cast<const unsigned char *>(bytes.data());
    if (!SHA256(begin, static_cast<size_t>(bytes.size()), reinterpret_cast<unsigned char *>(digest.data())))
        digest.clear();
    return digest;
}

} // namespace

QByteArray digestOf(const QString &wrappedKey)
{
    return sha256(bytesOf(wrappedKey));
}

// With the lengths, because else the end of one text could pass for the beginning of the next.
QByteArray digestOf(const SealedTexts &sealed)
{
    QByteArray all;
    for (const QString &text : {sealed.wrappedKey, sealed.iv, sealed.text})
        all.append(QByteArray::number(text.size())).append(':').append(bytesOf(text));
    return sha256(all);
}

} // namespace tideloft::crypto
