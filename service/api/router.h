// Finds the handler of a request, and turns what a handler throws into a reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

#include <QByteArrayList>
#include <QList>

namespace tideloft::service
{

class Router
{
public:
    /// PATTERN is a path whose segments may be placeholders: "/api/chat/history/{peer}".
    void add(const QByteArray &method, const QByteArray &pattern, Handler handler,
             BodySize bodySize = BodySize::Usual);

    /// "METHOD pattern" of each.
    QByteArrayList endpoints() const;

    /// What the handler of this request expects to be sent. Looks at method and target only.
    BodySize bodySize(const Request &head) const;

    /// Never throws: an unknown path is 404, a wrong method 405, what a handler throws is what
    /// failureResponse() makes of it.
    Reply handle(Request request) const;

private:
    struct Route {
        QByteArray method;
        QByteArray pattern;
        QList<QByteArray> segments;
        Handler handler;
        BodySize bodySize;
    };

    QList<Route> routes;
};

} // namespace tideloft::service
