// What every group of endpoints works with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/http/exchange.h"
#include "service/api/password.h"

#include <QDateTime>

#include <functional>

namespace tideloft::service
{

struct User {
    qint64 id = 0;
    QString name;
};

struct ApiSettings {
    ScryptCost scryptCost;
    bool secureCookies = true; ///< false only where the service speaks plain HTTP on loopback
    std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
};

struct ApiContext {
    Database &database;
    ApiSettings settings;

    qint64 nowInMilliseconds() const { return settings.now().toMSecsSinceEpoch(); }
};

/// A handler for signed-in users only.
using UserHandler = std::function<Reply(const Request &, const User &)>;

} // namespace tideloft::service
