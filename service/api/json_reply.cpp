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

} // namespace

Response jsonTextResponse(const QByteArray &json, int status)
{
    Response response;
    response.status = status;
    response.contentType = jsonType;
    response.body = json;
    return response;
}

Response jsonResponse(const QJsonObject &object, int status)
{
    return jsonTextResponse(QJsonDocument(object).toJson(QJsonDocument::Compact), status);
}

Response jsonResponse(const QJsonArray &array)
{
    return jsonTextResponse(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

Response errorResponse(const Refusal &refusal)
{
    const QJsonObject body{{QStringLiteral("message"), refusal.message}};
    return refusalResponse(refusal, jsonType, QJsonDocument(body).toJson(QJsonDocument::Compact));
}

} // namespace tideloft::service
