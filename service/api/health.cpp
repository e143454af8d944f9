// A write that changes nothing that anybody reads.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/health.h"

#include "service/api/json_reply.h"
#include "service/store/facts.h"

#include <atomic>
#include <memory>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::chrono::milliseconds timeLimit{1000};

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

// Anybody may ask, so a write is made once a second at most.
class Probe
{
public:
    explicit Probe(ApiContext &owner) : context(owner) {}

    Reply ask()
    {
        const qint64 now = context.settings.steadyNow();
        if (last.load() && wroteAt > now - timeLimit.count())
            return healthy();
        return Later<Response>{[this, now](const Finish<Response> &finish) { write(now, finish); }, timeLimit,
                               ill(u"The database has not answered within a second."_s)};
    }

private:
    void write(qint64 now, const Finish<Response> &finish)
    {
        const bool accepted =
            context.store.write({[now](Database &database) { setFact(database, u"probe"_s, now); },
                                 [this, now, finish](const std::exception_ptr &failure) {
                                     last = !failure;
                                     wroteAt = now;
                                     finish(responseFor(failure));
                                 }});
        if (!accepted)
            finish(ill(u"Too many writes are waiting."_s));
    }

    ApiContext &context;
    std::atomic<bool> last = false; ///< how the last write ended
    std::atomic<qint64> wroteAt = 0;
};

} // namespace

void addHealthRoute(Router &router, ApiContext &context)
{
    router.add("GET", "/healthz",
               [probe = std::make_shared<Probe>(context)](const Request &) { return probe->ask(); });
}

} // namespace tideloft::service
