// One request to a service on a port of this machine.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/http_reply.h"

namespace tideloft::tests
{

/// BODY is JSON text. MORE are further lines of the head. The status is 0 when the connection ended without a
/// reply.
inline HttpReply call(HttpClient &client, const QByteArray &method, const QByteArray &target,
                      const QByteArray &cookie, const QByteArray &body, const QByteArray &more = {})
{
    return parsedReply(client.exchange(method + ' ' + target + " HTTP/1.1\r\nHost: h\r\nCookie: " + cookie
                                       + "\r\n" + more + "Content-Type: application/json\r\nContent-Length: "
                                       + QByteArray::number(body.size()) + "\r\n\r\n" + body));
}

/// Over a connection of its own.
inline HttpReply call(quint16 port, const QByteArray &method, const QByteArray &target,
                      const QByteArray &cookie, const QJsonObject &body = {}, const QByteArray &more = {})
{
    HttpClient client(port);
    const QByteArray text = body.isEmpty() ? QByteArray() : QJsonDocument(body).toJson();
    return call(client, method, target, cookie, text, more);
}

} // namespace tideloft::tests
