// Matching of paths, and the one place where failures become replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/router.h"

#include "service/api/json_reply.h"

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

template <typename Result, typename Step> Result guarded(const QByteArray &route, Step step)
{
    Response failure;
    try {
        return step();
    } catch (const Refusal &refusal) {
        failure = errorResponse(refusal);
    } catch (const std::exception &error) {
        failure = errorResponse(Refusal(500, u"The service could not handle this request."_s));
        failure.problem = error.what();
    }
    failure.route = route;
    return failure;
}

Response finished(const QByteArray &route, const Continuation &continuation)
{
    return guarded<Response>(route, [&] {
        Response response = continuation();
        response.route = route;
        return response;
    });
}

// The job may fail on its own thread; its failure is told from there as the continuation's answer.
Deferred guardedJob(const QByteArray &route, Deferred deferred)
{
    auto job = [route, work = std::move(deferred.work)]() -> Continuation {
        Continuation continuation;
        const auto failure = guarded<Response>(route, [&] {
            continuation = work();
            return Response();
        });
        if (!continuation)
            return [failure] { return failure; };
        return [route, continuation] { return finished(route, continuation); };
    };
    return {std::move(job), route};
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
        auto reply = guarded<Reply>(route.pattern, [&] { return route.handler(request); });
        if (auto *deferred = std::get_if<Deferred>(&reply))
            return guardedJob(route.pattern, std::move(*deferred));
        std::get<Response>(reply).route = route.pattern;
        return reply;
    }
    return otherMethods.isEmpty() ? errorResponse(Refusal(404, u"There is nothing at this address."_s))
                                  : notAllowed(otherMethods);
}

} // namespace tideloft::service
