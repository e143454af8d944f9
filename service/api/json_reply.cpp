// Writing JSON into replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/json_reply.h"

#include <QJsonDocument>

namespace tideloft::service
{

Response jsonResponse(const QJsonObject &object, int status)
{
    Response response;
    response.status = status;
    response.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return response;
}

Response jsonResponse(const QJsonArray &array)
{
    Response response;
    response.body = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return response;
}

Response errorResponse(const Refusal &refusal)
{
    return jsonResponse(QJsonObject{{QStringLiteral("message"), refusal.message}}, refusal.status);
}

} // namespace tideloft::service
