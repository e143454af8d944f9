// Unwrapping of a message's content key with this device's private key, which is parsed once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct evp_pkey_ctx_st; // OpenSSL's EVP_PKEY_CTX, whose header belongs to this room alone

namespace tideloft::crypto
{

/// Unwraps content keys with one private key.
class KeyUnwrapping
{
public:
    /// Whether the private key is parsed, so that unwrap() needs it no more.
    [[nodiscard]] bool hasPrivateKey() const { return decryption != nullptr; }
    /// rsaOaepDecrypt() that parses PRIVATEKEY only if no private key is parsed yet.
    QByteArray unwrap(const QByteArray &privateKey, const QByteArray &wrappedKey, QString *error);
    /// Wipes the parsed private key.
    void clear() { decryption.reset(); }

private:
    struct Free {
        void operator()(evp_pkey_ctx_st *context) const noexcept;
    };

    std::unique_ptr<evp_pkey_ctx_st, Free> decryption; ///< holds the parsed private key
};

} // namespace tideloft::crypto
