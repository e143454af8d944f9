// Endpoints of device keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/key_handlers.h"

#include "service/api/device_rules.h"
#include "service/api/json_body.h"
#include "service/api/json_reply.h"
#include "service/api/sign_in_sessions.h"
#include "service/store/device_keys.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestDeviceName = 100;
constexpr qsizetype longestPublicKey = 8192;

QJsonObject keyList(Database &database, const User &user)
{
    QJsonArray keys;
    for (const DeviceKey &key : deviceKeys(database, user))
        keys.append(QJsonObject{{u"deviceId"_s, key.deviceId},
                                {u"deviceName"_s, key.deviceName},
                                {u"publicKeyBase64"_s, key.publicKey}});
    return {{u"username"_s, user.name}, {u"keys"_s, keys}};
}

Outcome registerKey(const ApiContext &context, const Request &request, const User &user)
{
    const JsonBody body(request);
    const DeviceKey key{body.text(u"deviceId"_s, longestDeviceId),
                        body.text(u"deviceName"_s, longestDeviceName),
                        body.text(u"publicKey"_s, longestPublicKey)};
    if (!isDeviceId(key.deviceId))
        throw Refusal(400, u"A device identifier has 1 to 128 characters on one line."_s);
    if (!isSingleLine(key.deviceName))
        throw Refusal(400, u"A device name must not have control characters."_s);
    if (!isAcceptablePublicKey(key.publicKey))
        throw Refusal(400, u"The public key must be an RSA key of 2048 to 4096 bits in Base64."_s);
    return Change([user, key, now = context.nowInMilliseconds()](Database &database) {
        if (!storeDeviceKey(database, user, key, now))
            throw Refusal(409, u"You have too many devices already (%1)."_s.arg(maximumDevices));
        return jsonResponse(QJsonObject{{u"deviceId"_s, key.deviceId}});
    });
}

Response ownKeys(Database &database, const Request &, const User &user)
{
    return jsonResponse(keyList(database, user));
}

Response keysOf(Database &database, const Request &request, const User &)
{
    const std::optional<User> user = findUser(database, request.parameters.value(0));
    if (!user)
        throw Refusal(404, u"There is no user with this name."_s);
    return jsonResponse(keyList(database, *user));
}

} // namespace

void addKeyRoutes(Router &router, ApiContext &context)
{
    router.add("POST", "/api/chat/device-key",
               forSignedIn(context, [&context](Database &, const Request &request, const User &user) {
                   return registerKey(context, request, user);
               }));
    router.add("GET", "/api/chat/device-keys/me", forSignedIn(context, &ownKeys));
    router.add("GET", "/api/chat/public-key/{username}", forSignedIn(context, &keysOf));
}

} // namespace tideloft::service
