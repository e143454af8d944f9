// Reading of wrapped key records.
#include "crypto/wrapped_keys.h"

#include <QJsonObject>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

QList<WrappedKey> collectWrappedKeys(const QJsonArray &records)
{
    QList<WrappedKey> keys;
    for (const auto &value : records) {
        const QJsonObject record = value.toObject();
        const WrappedKey key{record.value(u"deviceId"_s).toString().trimmed(),
                             record.value(u"encryptedKey"_s).toString().trimmed()};
        if (!key.deviceId.isEmpty() && !key.encryptedKey.isEmpty())
            keys << key;
    }
    return keys;
}

QString findWrappedKeyForDevice(const QJsonArray &records, const QString &deviceId)
{
    const QString wanted = deviceId.trimmed().toLower();
    for (const WrappedKey &key : collectWrappedKeys(records))
        if (key.deviceId.toLower() == wanted)
            return key.encryptedKey;
    return {};
}

} // namespace tideloft::crypto
