// The device of a fuzz target: a data directory of its own with the published key in it, and messages for it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/aes_gcm.h"
#include "crypto/keys/key_store.h"
#include "tests/fuzz/require.h"
#include "tests/support/crypto/sealed_items.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_home.h"

#include <QCoreApplication>

namespace tideloft::tests
{

/// Made once: the keys of alice's device dev-1.
class KeyHome
{
public:
    KeyHome()
    {
        QCoreApplication::setApplicationName(u"TideLoft"_s);
        QCoreApplication::setOrganizationName(u"TideLoft"_s);
        require(crypto::writePrivateKeyFile(privateText) && crypto::writePublicKeyFile(publicText),
                "the key files can be written");
    }

    const QString privateText = crypto::toBase64Text(publishedPrivateKey());
    const QString publicText = crypto::toBase64Text(publicKeyOf(publishedPrivateKey()));
    const QByteArray contentKey = QByteArray(crypto::aesKeySize, 'k');
    const QByteArray nonce = QByteArray(crypto::gcmNonceSize, 'n');
    /// The content key, wrapped for this device once and for all.
    const QString wrappedKey = crypto::toBase64Text(
        crypto::rsaOaepEncrypt(publicKeyOf(publishedPrivateKey()), QByteArray(crypto::aesKeySize, 'k')));

private:
    const TestHome home; // last: it lays the places down before the constructor's body writes to them
};

/// VALUE with FILL applied to every text in it, members' values and elements.
template <typename Fill> QJsonValue filled(const QJsonValue &value, const Fill &fill)
{
    if (value.isString())
        return fill(value.toString());
    if (value.isObject()) {
        QJsonObject object = value.toObject();
        for (auto &&member : object)
            member = filled(QJsonValue(member), fill);
        return object;
    }
    if (!value.isArray())
        return value;
    QJsonArray array = value.toArray();
    for (auto &&element : array)
        element = filled(QJsonValue(element), fill);
    return array;
}

/// Whether an input belongs to the one share of OUTOF that may pay for RSA. The same for the same input; all
/// do where only what was kept is replayed.
inline bool mayPay([[maybe_unused]] const QByteArray &input, [[maybe_unused]] size_t outOf)
{
#ifdef TIDELOFT_FUZZ_REPLAY
    return true;
#else
    return qHashBits(input.constData(), static_cast<size_t>(input.size()), 1) % outOf == 0;
#endif
}

} // namespace tideloft::tests
