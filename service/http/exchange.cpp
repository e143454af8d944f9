// Building replies, and reading the small parts of a request.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/exchange.h"

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

Response errorResponse(int status, const QString &message)
{
    return jsonResponse(QJsonObject{{QStringLiteral("message"), message}}, status);
}

Response busyResponse()
{
    Response response = errorResponse(503, QStringLiteral("The service is busy. Please try again."));
    response.headers.emplaceBack("Retry-After", "1");
    return response;
}

QString queryValue(const Request &request, QByteArrayView name)
{
    const qsizetype mark = request.target.indexOf('?');
    const QByteArray query = mark < 0 ? QByteArray() : request.target.mid(mark + 1);
    for (QByteArray item : query.split('&')) {
        item.replace('+', ' '); // before decoding, so that %2B stays a plus
        const qsizetype equals = item.indexOf('=');
        if (QByteArray::fromPercentEncoding(item.left(equals < 0 ? item.size() : equals)) == name)
            return equals < 0 ? QString()
                              : QString::fromUtf8(QByteArray::fromPercentEncoding(item.mid(equals + 1)));
    }
    return {};
}

QByteArray cookieValue(const Request &request, QByteArrayView name)
{
    for (const QByteArray &pair : request.cookie.split(';')) {
        const QByteArray cookie = pair.trimmed();
        if (cookie.startsWith(name) && cookie.mid(name.size()).startsWith('='))
            return cookie.mid(name.size() + 1);
    }
    return {};
}

} // namespace tideloft::service
