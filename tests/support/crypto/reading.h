// Reading as alice on her device, with a cache.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/aes_gcm.h"
#include "crypto/messages/decryption_cache.h"
#include "crypto/messages/open_message.h"
#include "crypto/messages/sealed_texts.h"
#include "crypto/messages/wrapped_keys.h"
#include "tests/support/crypto/sealed_items.h"

namespace tideloft::tests
{

inline const QByteArray contentKey(32, 'k');
inline const QByteArray nonce(12, 'n');

inline QJsonObject sealedWith(const QByteArray &key, const QByteArray &text)
{
    return sealedBy(key, nonce, crypto::aesGcmEncrypt(key, nonce, text));
}

inline QString wrappedKeyOf(const QJsonObject &message)
{
    return crypto::findWrappedKeyForDevice(message.value(u"recipientKeys"_s).toArray(), own);
}

inline QString keyText()
{
    return crypto::toBase64Text(publishedPrivateKey());
}

inline QString textWith(crypto::DecryptionCache &cache, const QJsonObject &message)
{
    return crypto::decryptMessage(message, u"alice"_s, own, cache).text;
}

inline QString errorWith(crypto::DecryptionCache &cache, const QJsonObject &message)
{
    return crypto::decryptMessage(message, u"alice"_s, own, cache).error;
}

} // namespace tideloft::tests
