// Counting in memory or in the database.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/counted_attempts.h"

#include "service/api/json_reply.h"
#include "service/store/attempts.h"

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

int mostOf(const ApiContext &context, Attempted what)
{
    return what == Attempted::Registration ? context.settings.registrationsPerMinute
                                           : context.settings.signInsPerMinute;
}

AttemptLimit &limitOf(ApiContext &context, Attempted what)
{
    if (what == Attempted::Registration)
        return context.registrations;
    return what == Attempted::SignInToAccount ? context.signInsOfAccount : context.signInsOfAddress;
}

void refuseUnlessZero(int seconds)
{
    if (seconds != 0)
        throw Refusal(429, u"Too many attempts. Please try again in a minute."_s, seconds);
}

// Old ones go once a minute, along with an attempt: who writes then has something to write anyway.
void removeOldOnesNowAndThen(ApiContext &context, Database &database)
{
    constexpr qint64 interval = 60'000; // ms
    const qint64 now = context.settings.steadyNow();
    qint64 next = context.nextRemovalOfAttempts;
    if (now >= next && context.nextRemovalOfAttempts.compare_exchange_strong(next, now + interval))
        removeOldAttempts(database);
}

void countTogether(ApiContext &context, Database &database, const QList<CountedAttempt> &attempts)
{
    removeOldOnesNowAndThen(context, database);
    for (const CountedAttempt &attempt : attempts) {
        const int most = mostOf(context, attempt.what);
        const QByteArray kind = QByteArray::number(static_cast<int>(attempt.what));
        if (most > 0)
            refuseUnlessZero(countAttempt(database, kind + ' ' + attempt.key, most));
    }
}

bool anyIsLimited(const ApiContext &context, const QList<CountedAttempt> &attempts)
{
    return std::any_of(attempts.begin(), attempts.end(),
                       [&](const CountedAttempt &attempt) { return mostOf(context, attempt.what) > 0; });
}

} // namespace

Outcome onceCounted(ApiContext &context, Database &lookUp, const QList<CountedAttempt> &attempts,
                    const LookUp &next)
{
    if (context.store.isShared() && anyIsLimited(context, attempts))
        return std::make_shared<const Count>(Count{
            [&context, attempts](Database &database) { countTogether(context, database, attempts); }, next});
    for (const CountedAttempt &attempt : attempts)
        refuseUnlessZero(limitOf(context, attempt.what).attempt(attempt.key, context.settings.steadyNow()));
    return next(lookUp);
}

} // namespace tideloft::service
