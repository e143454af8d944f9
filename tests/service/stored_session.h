// Users who are signed in, put into a database past the service: no password is hashed for them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/sessions.h"

#include <QCryptographicHash>

namespace tideloft::tests
{

/// Makes a user with a session that lasts as long as any test, and returns its Cookie header.
inline QByteArray storeSession(service::Database &database, const QString &name)
{
    constexpr qint64 never = qint64{1} << 52;
    const QByteArray token = "token-of-" + name.toLatin1();
    service::addUser(database, name, "no hash", 1);
    service::addSession(database, QCryptographicHash::hash(token, QCryptographicHash::Sha256),
                        service::findUser(database, name).value(), 0, never);
    return "tideloft_session=" + token;
}

} // namespace tideloft::tests
