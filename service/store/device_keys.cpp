// Rows of device keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/device_keys.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

bool storeDeviceKey(Database &database, const User &user, const DeviceKey &key, qint64 now)
{
    Transaction transaction(database);
    lockUser(database, user);
    const qint64 others = database.number(
        u"SELECT count(*) FROM device_keys WHERE user_id = ? AND device_id <> ?"_s, {user.id, key.deviceId});
    if (others >= maximumDevices)
        return false;
    database.run(u"INSERT INTO device_keys (user_id, device_id, device_name, public_key, updated_at)"
                 " VALUES (?, ?, ?, ?, ?) ON CONFLICT (user_id, device_id) DO UPDATE SET"
                 " device_name = excluded.device_name, public_key = excluded.public_key,"
                 " updated_at = excluded.updated_at"_s,
                 {user.id, key.deviceId, key.deviceName, key.publicKey, now});
    transaction.commit();
    return true;
}

QList<DeviceKey> deviceKeys(Database &database, const User &user)
{
    Rows query = database.run(u"SELECT device_id, device_name, public_key FROM device_keys"
                              " WHERE user_id = ? ORDER BY device_id"_s,
                              {user.id});
    QList<DeviceKey> keys;
    while (query.next())
        keys.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString()});
    return keys;
}

} // namespace tideloft::service
