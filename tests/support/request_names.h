// What the requests of the client are called: method and path.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::tests::requests
{

inline const QByteArray sendMessage = QByteArrayLiteral("POST /api/chat/send");
inline const QByteArray listConversations = QByteArrayLiteral("GET /api/chat/conversations");
inline const QByteArray registerDevice = QByteArrayLiteral("POST /api/chat/device-key");
inline const QByteArray keysOfBob = QByteArrayLiteral("GET /api/chat/public-key/bob");
inline const QByteArray historyWithBob = QByteArrayLiteral("GET /api/chat/history/bob");
inline const QByteArray listDevices = QByteArrayLiteral("GET /api/chat/device-keys/me");
inline const QByteArray listServers = QByteArrayLiteral("GET /api/groups");
inline const QByteArray createServer = QByteArrayLiteral("POST /api/groups");
inline const QByteArray uploadAvatar = QByteArrayLiteral("POST /api/profile/avatar/upload");
inline const QByteArray updateProfile = QByteArrayLiteral("POST /api/profile/update");

} // namespace tideloft::tests::requests
