// A cache for opening messages: what RSA costs is paid once for each message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/secret_bytes.h"
#include "crypto/messages/key_unwrapping.h"

#include <QCache>
#include <QString>

#include <optional>

namespace tideloft::crypto
{

/// Holds the parsed private key, the content keys of messages that opened, and the errors of those that did
/// not. With it a message opens or fails in microseconds instead of a millisecond. Failures are cached apart
/// from content keys, so that messages that fail cannot evict those that open. The cache belongs to one
/// private key, user and device: it is cleared for any other. Keys are wiped when they leave the
/// cache.
///
/// One object serves one thread. Hand it to decryptMessage(); call clear() when the user signs out.
class DecryptionCache
{
public:
    static constexpr qsizetype mostContentKeys = 65'536; ///< some 17 MiB when full
    /// More than a history and a conversation list can show together; some 16 MiB when full.
    static constexpr qsizetype mostFailures = 65'536;

    /// Holds CAPACITY content keys, at least one. A full cache evicts the key that was not used for longest.
    explicit DecryptionCache(qsizetype capacity = mostContentKeys) : contentKeys(capacity) {}
    Q_DISABLE_COPY_MOVE(DecryptionCache)
    ~DecryptionCache() { clear(); }

    void clear();
    /// Another number after the cache was cleared, or after a failure that may pass. While it is the same, a
    /// message that opened opens to the same text, and one that failed fails for the same reason.
    [[nodiscard]] quint64 generation() const { return changes; }
    /// How many content keys are cached.
    [[nodiscard]] qsizetype size() const { return contentKeys.size(); }

    /// Sets whose messages are opened from now on: with KEYTEXT, the bytes of the key file, for OWNNAME on
    /// OWNDEVICEID. Clears the cache if one of them differs from before, and if there is no key.
    void setReader(const QByteArray &keyText, const QString &ownName, const QString &ownDeviceId);
    /// The content key that is cached under DIGEST, digestOf() a wrapped key. Empty if there is none. It
    /// shares its bytes with the cache, and so is wiped when it leaves the cache.
    [[nodiscard]] QByteArray contentKey(const QByteArray &digest) const;
    void insertContentKey(const QByteArray &digest, const QByteArray &contentKey);
    /// The error that is cached under DIGEST, digestOf() the texts of a message.
    [[nodiscard]] std::optional<QString> failure(const QByteArray &digest) const;
    void insertFailure(const QByteArray &digest, const QString &error);
    /// A message has failed for a reason that may pass: generation() changes, and the cache stays.
    void noteTransientFailure() { ++changes; }
    /// Unwraps with the private key of setReader(), which it parses once.
    [[nodiscard]] KeyUnwrapping &keyUnwrapping() { return unwrapping; }

private:
    SecretBytes privateKeyText{QByteArray()};
    QString userName;
    QString deviceId;
    KeyUnwrapping unwrapping;
    QCache<QByteArray, SecretBytes> contentKeys;
    QCache<QByteArray, QString> failures{mostFailures};
    quint64 changes = 0;
};

} // namespace tideloft::crypto
