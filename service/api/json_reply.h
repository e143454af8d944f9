// Replies in JSON.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tideloft::service
{

Response jsonResponse(const QJsonObject &object, int status = 200);
Response jsonResponse(const QJsonArray &array);

/// A text that is JSON already.
Response jsonTextResponse(const QByteArray &json, int status = 200);

/// A JSON object with the single member `message`.
Response errorResponse(const Refusal &refusal);

} // namespace tideloft::service
