// Matching of paths.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/router.h"

#include "service/api/json_reply.h"
#include "service/api/tasks.h"

#include <algorithm>
#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QList<QByteArray> segmentsOf(const QByteArray &target)
{
    const qsizetype query = target.indexOf('?');
    return (query < 0 ? target : target.left(query)).split('/');
}

// Segments are split before they are decoded, so an encoded slash inside a name stays part of the name.
std::optional<QStringList> match(const QList<QByteArray> &pattern, const QList<QByteArray> &path)
{
    if (pattern.size() != path.size())
        return std::nullopt;
    QStringList parameters;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QByteArray segment = QByteArray::fromPercentEncoding(path[i]);
        if (pattern[i].startsWith('{') && !segment.isEmpty())
            parameters << QString::fromUtf8(segment);
        else if (pattern[i] != segment)
            return std::nullopt;
    }
    return parameters;
}

// What comes later is logged under its route too.
Reply onRoute(const QByteArray &route, Reply reply)
{
    if (auto *response = std::get_if<Response>(&reply)) {
        response->route = route;
        return reply;
    }
    auto &later = std::get<Later<Response>>(reply);
    later.whenLate.route = route;
    later.start = [route, start = std::move(later.start)](const Finish<Response> &finish) {
        start([route, finish](Response response) {
            response.route = route;
            finish(std::move(response));
        });
    };
    return reply;
}

Response notAllowed(const QList<QByteArray> &methods)
{
    Response response = errorResponse(Refusal(405, u"This method is not allowed here."_s));
    response.headers.append({"Allow", methods.join(", ")});
    return response;
}

} // namespace

void Router::add(const QByteArray &method, const QByteArray &pattern, Handler handler, BodySize bodySize)
{
    routes.append({method, pattern, segmentsOf(pattern), std::move(handler), bodySize});
}

QByteArrayList Router::endpoints() const
{
    QByteArrayList all;
    for (const Route &route : routes)
        all << route.method + ' ' + route.pattern;
    return all;
}

BodySize Router::bodySize(const Request &head) const
{
    const QList<QByteArray> path = segmentsOf(head.target);
    const auto route = std::find_if(routes.begin(), routes.end(), [&](const Route &candidate) {
        return candidate.method == head.method && match(candidate.segments, path);
    });
    return route == routes.end() ? BodySize::Usual : route->bodySize;
}

Reply Router::handle(Request request) const
{
    const QList<QByteArray> path = segmentsOf(request.target);
    QList<QByteArray> otherMethods;
    for (const Route &route : routes) {
        const std::optional<QStringList> parameters = match(route.segments, path);
        if (!parameters)
            continue;
        if (route.method != request.method) {
            otherMethods << route.method;
            continue;
        }
        request.parameters = *parameters;
        try {
            return onRoute(route.pattern, route.handler(request));
        } catch (...) {
            return onRoute(route.pattern, failureResponse(std::current_exception()));
        }
    }
    return otherMethods.isEmpty() ? errorResponse(Refusal(404, u"There is nothing at this address."_s))
                                  : notAllowed(otherMethods);
}

} // namespace tideloft::service
