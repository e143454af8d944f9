// Reading of wrapped key records.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/wrapped_keys.h"

#include "crypto/messages/trimmed_member.h"

#include <QJsonObject>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

QList<WrappedKey> collectWrappedKeys(const QJsonArray &records)
{
    QList<WrappedKey> keys;
    for (const auto &value : records) {
        const QJsonObject record = value.toObject();
        const WrappedKey key{trimmedMember(record, u"deviceId"_s), trimmedMember(record, u"encryptedKey"_s)};
        if (!key.deviceId.isEmpty() && !key.encryptedKey.isEmpty())
            keys << key;
    }
    return keys;
}

// The search ends at the first match: it runs for every message, and a message may be for many devices.
QString findWrappedKeyForDevice(const QJsonArray &records, const QString &deviceId)
{
    const QString wanted = deviceId.trimmed().toLower();
    if (wanted.isEmpty())
        return {};
    for (const auto &value : records) {
        const QJsonObject record = value.toObject();
        if (trimmedMember(record, u"deviceId"_s).toLower() != wanted)
            continue;
        if (QString key = trimmedMember(record, u"encryptedKey"_s); !key.isEmpty())
            return key;
    }
    return {};
}

} // namespace tideloft::crypto
