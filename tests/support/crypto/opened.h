// Opening through every way there is: alone, with a new cache, and with one that saw everything before.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/decryption_cache.h"
#include "crypto/messages/open_message.h"

#include <QTest>

namespace tideloft::tests
{

inline bool operator==(const crypto::DecryptResult &left, const crypto::DecryptResult &right)
{
    return left.ok == right.ok && left.error == right.error && left.text == right.text;
}

/// What decryptMessage() gives without a cache, after checking that it gives the same with a new one, once
/// it is no longer new, and with one that is shared by all calls of this program.
inline crypto::DecryptResult opened(const QJsonObject &message, const QString &name, const QString &deviceId)
{
    static crypto::DecryptionCache shared;
    crypto::DecryptionCache fresh;
    const crypto::DecryptResult alone = crypto::decryptMessage(message, name, deviceId);
    for (crypto::DecryptionCache *cache : {&fresh, &fresh, &shared, &shared}) {
        const crypto::DecryptResult result = crypto::decryptMessage(message, name, deviceId, *cache);
        if (!(result == alone))
            return {false, QStringLiteral("With a cache the result is: ") + result.error + result.text, {}};
    }
    return alone;
}

} // namespace tideloft::tests
