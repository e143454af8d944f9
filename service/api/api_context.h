// What every group of endpoints works with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/password.h"
#include "service/http/exchange.h"
#include "service/store/users.h"

#include <QDateTime>

#include <functional>

namespace tideloft::service
{

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
