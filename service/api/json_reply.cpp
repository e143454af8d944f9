// Writing JSON into replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/json_reply.h"

#include <QJsonDocument>

namespace tideloft::service
{

namespace
{

constexpr const char *jsonType = "application/json; charset=utf-8";

Response replyOf(const QJsonDocument &document, int status)
{
    Response response;
    response.status = status;
    response.contentType = jsonType;
    response.body = document.toJson(QJsonDocument::Compact);
    return response;
}

} // namespace

Response jsonResponse(const QJsonObject &object, int status)
{
    return replyOf(QJsonDocument(object), status);
}

Response jsonResponse(const QJsonArray &array)
{
    return replyOf(QJsonDocument(array), 200);
}

Response errorResponse(const Refusal &refusal)
{
    const QJsonObject body{{QStringLiteral("message"), refusal.message}};
    return refusalResponse(refusal, jsonType, QJsonDocument(body).toJson(QJsonDocument::Compact));
}

} // namespace tideloft::service
