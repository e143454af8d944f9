// What every request to the service has in common.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/urgency.h"

#include <QNetworkRequest>

namespace tideloft::net
{

/// A request for PATHANDQUERY, which follows the service's address as it stands.
QNetworkRequest serviceRequest(const QString &pathAndQuery, Urgency urgency = Urgency::Asked);

} // namespace tideloft::net
