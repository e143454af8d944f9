// Reading of wrapped key records.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/wrapped_keys.h"

#include "crypto/messages/trimmed_member.h"

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// The array for the side of the conversation that this user is on. The other one is never searched.
QJsonArray ownKeys(const QJsonObject &message, const QString &ownName)
{
    const bool sentByMe = trimmedMember(message, u"from"_s).toLower() == ownName.trimmed().toLower();
    return message.value(sentByMe ? u"senderKeys"_s : u"recipientKeys"_s).toArray();
}

} // namespace

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

QString findOwnWrappedKey(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId)
{
    return findWrappedKeyForDevice(ownKeys(message, ownName), ownDeviceId);
}

} // namespace tideloft::crypto
