// What opening messages has to pay for with RSA, remembered from one reading to the next.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/content_key_table.h"
#include "crypto/messages/failure_table.h"

#include <QString>

#include <memory>
#include <memory_resource>
#include <vector>

struct evp_pkey_ctx_st; // OpenSSL's EVP_PKEY_CTX, whose header belongs to this room alone

namespace tideloft::crypto
{

/// Holds the parsed private key, the content keys of messages that opened, and why others did not: with them
/// a message opens or fails in microseconds instead of a millisecond. Those that fail have a table of their
/// own, so that they cannot drive out those that open. All of it belongs to one private key text, user and
/// device; for any other it is forgotten. The keys that are forgotten are overwritten.
///
/// One object serves one thread. Hand it to decryptMessage(); call forget() when the user logs out.
class ReadingMemory
{
public:
    static constexpr quint32 defaultCapacity = 65'536; ///< content keys; below 5 MiB when full
    /// More than a history and a conversation list can show together; some 4 MiB when full.
    static constexpr qsizetype mostFailures = 16'384;

    /// With more content keys than `capacity` the oldest is forgotten for the newest. Keys and the private
    /// key text are kept in `storage`.
    explicit ReadingMemory(quint32 capacity = defaultCapacity,
                           std::pmr::memory_resource *storage = std::pmr::get_default_resource());
    Q_DISABLE_COPY_MOVE(ReadingMemory)
    ~ReadingMemory() { forget(); }

    void forget();
    /// Another number after everything was forgotten, or after a failure that may pass: while it is the same,
    /// a message that opened opens to the same text, and one that did not fails for the same reason.
    [[nodiscard]] quint64 generation() const { return forgotten; }
    /// How many content keys are remembered.
    [[nodiscard]] qsizetype size() const { return contentKeys.size(); }

    /// Says with which bytes of the key file messages are read from now on, for whom and on which device;
    /// forgets everything if one of them differs from before, and if there is no key text.
    void readFor(const QByteArray &keyText, const QString &ownName, const QString &ownDeviceId);
    /// The content key of a message that opened before, under its wrapped key text: a view, good until the
    /// memory changes. Empty if it is not known.
    [[nodiscard]] QByteArray contentKey(const WrappedKeyDigest &wrappedKey) const
    {
        return contentKeys.find(wrappedKey);
    }
    void remember(const WrappedKeyDigest &wrappedKey, const QByteArray &contentKey);
    /// What was said of a message that did not open before, under digestOf() its texts.
    [[nodiscard]] std::optional<QString> failure(const QByteArray &digest) const
    {
        return failures.find(digest);
    }
    void rememberFailure(const QByteArray &digest, const QString &error) { failures.insert(digest, error); }
    /// A message has failed for a reason that may pass. Nothing is forgotten, but generation() is another
    /// number.
    void expectAnotherAnswer() { ++forgotten; }
    /// Whether the private key was parsed, so that unwrap() needs it no more.
    [[nodiscard]] bool hasPrivateKey() const { return decryption != nullptr; }
    /// rsaOaepDecrypt() that parses the private key once. `privateKey` is the decoded text of readFor().
    QByteArray unwrap(const QByteArray &privateKey, const QByteArray &wrappedKey, QString *error);

private:
    struct Free {
        void operator()(evp_pkey_ctx_st *context) const noexcept;
    };

    std::pmr::vector<char> privateKeyText;
    QString userName;
    QString deviceId;
    std::unique_ptr<evp_pkey_ctx_st, Free> decryption; ///< holds the parsed private key
    ContentKeyTable contentKeys;
    FailureTable failures{mostFailures};
    quint64 forgotten = 0;
};

} // namespace tideloft::crypto
