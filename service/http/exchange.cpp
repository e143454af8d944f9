// Building replies, and reading the small parts of a request.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/exchange.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

Refusal tooBusy()
{
    return {503, u"The service is busy. Please try again."_s};
}

Response refusalResponse(const Refusal &refusal, const QByteArray &contentType, const QByteArray &body)
{
    Response response;
    response.status = refusal.status;
    response.contentType = contentType;
    response.body = body;
    if (refusal.retryAfter > 0)
        response.headers.emplaceBack("Retry-After", QByteArray::number(refusal.retryAfter));
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
