// A write that changes nothing that anybody reads.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/health.h"

#include "service/api/json_reply.h"
#include "service/store/facts.h"

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::chrono::milliseconds timeLimit{1000};
constexpr qint64 memory = 5000; // ms for which a late answer tells why the last write failed

Response healthy()
{
    return jsonResponse(QJsonObject{{u"status"_s, u"ok"_s}});
}

Response ill(const QString &reason)
{
    return jsonResponse(QJsonObject{{u"status"_s, u"failing"_s}, {u"message"_s, reason}}, 503);
}

Response responseFor(const std::exception_ptr &failure)
{
    if (!failure)
        return healthy();
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception &error) {
        return ill(QString::fromUtf8(error.what()));
    }
}

Response late()
{
    return ill(u"The database has not answered within a second."_s);
}

// Anybody may ask, so there is one write at a time, and after a good one none for a second. Who asks
// meanwhile gets the answer of the write that is under way.
class Probe
{
public:
    explicit Probe(ApiContext &owner) : context(owner) {}

    Reply ask()
    {
        const qint64 now = context.settings.steadyNow();
        const std::lock_guard lock(mutex);
        if (endedAt && !lastFailure && *endedAt > now - timeLimit.count())
            return healthy();
        const Response whenLate = lastFailure && *endedAt > now - memory ? *lastFailure : late();
        if (underWay && beganAt <= now - timeLimit.count())
            return whenLate;
        return Later<Response>{[this, now](const Finish<Response> &finish) { wait(now, finish); }, timeLimit,
                               whenLate};
    }

private:
    void wait(qint64 now, const Finish<Response> &finish)
    {
        {
            const std::lock_guard lock(mutex);
            waiting.push_back(finish);
            if (underWay)
                return;
            underWay = true;
            beganAt = now;
        }
        const bool accepted =
            context.store.write({[now](Database &database) { setFact(database, u"probe"_s, now); },
                                 [this](const std::exception_ptr &failure) { end(responseFor(failure)); }});
        if (!accepted)
            end(ill(u"Too many writes are waiting."_s));
    }

    void end(const Response &response)
    {
        std::vector<Finish<Response>> told;
        {
            const std::lock_guard lock(mutex);
            told.swap(waiting);
            underWay = false;
            lastFailure = response.status == 200 ? std::nullopt : std::optional(response);
            endedAt = context.settings.steadyNow();
        }
        for (const Finish<Response> &finish : told)
            finish(response);
    }

    ApiContext &context;
    std::mutex mutex;
    std::vector<Finish<Response>> waiting; ///< for the write that is under way
    bool underWay = false;
    qint64 beganAt = 0;
    std::optional<qint64> endedAt;       ///< nothing before the first
    std::optional<Response> lastFailure; ///< what the last one came to, unless it was good
};

} // namespace

void addHealthRoute(Router &router, ApiContext &context)
{
    router.add("GET", "/healthz",
               [probe = std::make_shared<Probe>(context)](const Request &) { return probe->ask(); });
}

} // namespace tideloft::service
