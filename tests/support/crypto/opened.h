// Opening through every way there is: alone, with a new memory, and with one that saw everything before.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/open_message.h"
#include "crypto/messages/reading_memory.h"

#include <QTest>

namespace tideloft::tests
{

inline bool operator==(const crypto::DecryptResult &left, const crypto::DecryptResult &right)
{
    return left.ok == right.ok && left.error == right.error && left.text == right.text;
}

/// What decryptMessage() gives without a memory, after checking that it gives the same with a new one, once
/// it is no longer new, and with one that is shared by all calls of this program.
inline crypto::DecryptResult opened(const QJsonObject &message, const QString &name, const QString &deviceId)
{
    static crypto::ReadingMemory shared;
    crypto::ReadingMemory fresh;
    const crypto::DecryptResult alone = crypto::decryptMessage(message, name, deviceId);
    for (crypto::ReadingMemory *memory : {&fresh, &fresh, &shared, &shared}) {
        const crypto::DecryptResult result = crypto::decryptMessage(message, name, deviceId, *memory);
        if (!(result == alone))
            return {false, QStringLiteral("With a memory the result is: ") + result.error + result.text, {}};
    }
    return alone;
}

} // namespace tideloft::tests
