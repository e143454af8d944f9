// What the log says about a request: never a body, a name or a cookie.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

namespace tideloft::service
{

enum class LogLevel { Info, Warning, Problem };

/// What came of a request, by its status.
LogLevel logLevel(const Response &response);

/// "METHOD ROUTE STATUS", and what went wrong inside if anything did. Control characters are written as \xHH,
/// so that no request can forge a line.
QByteArray logLine(const QByteArray &method, const Response &response);

} // namespace tideloft::service
