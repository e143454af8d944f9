// What every request to the service has in common.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/request_priority.h"

#include <QNetworkRequest>

namespace tideloft::net
{

/// A request for PATHANDQUERY, which follows the service's address as it stands.
QNetworkRequest serviceRequest(const QString &pathAndQuery,
                               RequestPriority priority = RequestPriority::UserInitiated);

/// What the headers say of this installation.
struct DeviceHeaders {
    QString id;
    QString name;
};

/// The same with the headers of every request that has JSON, or nothing, as its body.
QNetworkRequest jsonRequest(const QString &pathAndQuery, const DeviceHeaders &device,
                            RequestPriority priority);

} // namespace tideloft::net
