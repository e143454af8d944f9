// Requests as bytes, and a handler that tells what reached it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace tideloft::tests
{

inline const QByteArray get = "GET /x HTTP/1.1\r\nHost: h\r\n\r\n";

inline QByteArray post(const QByteArray &body)
{
    return "POST /x HTTP/1.1\r\nHost: h\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n"
           + body;
}

inline service::Response replyWith(const QJsonObject &object)
{
    service::Response response;
    response.contentType = "application/json; charset=utf-8";
    response.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return response;
}

inline service::Response echo(const service::Request &request)
{
    return replyWith(QJsonObject{{QStringLiteral("method"), QString::fromLatin1(request.method)},
                                 {QStringLiteral("target"), QString::fromLatin1(request.target)},
                                 {QStringLiteral("type"), QString::fromLatin1(request.contentType)},
                                 {QStringLiteral("cookie"), QString::fromLatin1(request.cookie)},
                                 {QStringLiteral("size"), request.body.size()}});
}

} // namespace tideloft::tests
