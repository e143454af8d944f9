// Sessions: a stolen copy of the database lets nobody in, because a hash is no cookie.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/sign_in_sessions.h"

#include "service/api/tasks.h"
#include "service/secrets/random.h"
#include "service/store/sessions.h"

#include <QCryptographicHash>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 dayInSeconds = qint64{24} * 60 * 60;
constexpr int tokenSize = 32;
constexpr const char *cookieName = "tideloft_session";

QByteArray tokenHash(const QByteArray &token)
{
    // A plain hash is enough: 32 random bytes cannot be guessed, unlike a password.
    return QCryptographicHash::hash(token, QCryptographicHash::Sha256);
}

QByteArray requestToken(const Request &request)
{
    return cookieValue(request, cookieName);
}

QByteArray cookie(const ApiContext &context, const QByteArray &value)
{
    const QByteArray secure = context.settings.secureCookies ? "; Secure" : "";
    return cookieName + QByteArray("=") + value + "; Path=/; HttpOnly; SameSite=Strict" + secure;
}

std::optional<User> userOf(const ApiContext &context, const std::optional<CachedSession> &session)
{
    if (!session || session->user == 0 || session->expiresAt <= context.sessionTime())
        return std::nullopt;
    return User{session->user, session->name};
}

std::optional<CachedSession> sessionOf(ApiContext &context, Database &database,
                                       const SessionLookUps::Ticket &wanted)
{
    auto &cache = context.store.cache().sessions;
    const quint64 generation = cache.generation();
    std::optional<CachedSession> session = cache.find(wanted->tokenHash);
    if (!session) {
        session = context.store.sessions().find(database, wanted);
        if (session)
            cache.learn(wanted->tokenHash, *session, generation);
    }
    return session;
}

QByteArray maximumAge(qint64 seconds)
{
    return "; Max-Age=" + QByteArray::number(seconds);
}

// The cache of sessions may be a second old. Nothing is stored for an account that was disabled
// meanwhile.
Outcome onlyWhileActive(const User &user, Outcome outcome)
{
    auto *change = std::get_if<Change>(&outcome);
    if (!change)
        return outcome;
    return Change([user, change = std::move(*change)](Database &database) {
        if (stateOf(database, user) != UserState::Active)
            throw signInFirst();
        return change(database);
    });
}

} // namespace

QByteArray newSessionToken()
{
    return randomBytes(tokenSize).toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QByteArray beginSession(const ApiContext &context, Database &database, const User &user,
                        const QByteArray &token, bool remember)
{
    const qint64 seconds = remember ? 30 * dayInSeconds : dayInSeconds;
    const qint64 now = context.sessionTime();
    addSession(database, tokenHash(token), user, now, now + seconds * 1000);
    return cookie(context, token) + (remember ? maximumAge(seconds) : QByteArray());
}

bool carriesSession(const Request &request)
{
    return !requestToken(request).isEmpty();
}

std::optional<User> sessionUser(ApiContext &context, Database &database, const Request &request)
{
    return userOf(context, sessionOf(context, database,
                                     context.store.sessions().want(tokenHash(requestToken(request)))));
}

std::optional<User> cachedUser(const ApiContext &context, const Request &request)
{
    return userOf(context, context.store.cache().sessions.find(tokenHash(requestToken(request))));
}

QByteArray endSession(const ApiContext &context, Database &database, const Request &request)
{
    removeSession(database, tokenHash(requestToken(request)));
    return cookie(context, {}) + maximumAge(0);
}

Refusal signInFirst()
{
    return {401, u"Please sign in first."_s};
}

Handler forSignedIn(ApiContext &context, UserHandler handler, StateCheck check)
{
    return [&context, handler = std::move(handler), check](const Request &request) -> Reply {
        if (!carriesSession(request))
            throw signInFirst();
        const SessionLookUps::Ticket wanted = context.store.sessions().want(tokenHash(requestToken(request)));
        return answerAfter(
            context, request.peer, [&context, handler, check, request, wanted](Database &database) {
                const std::optional<User> user = userOf(context, sessionOf(context, database, wanted));
                if (!user)
                    throw signInFirst();
                Outcome outcome = handler(database, request, *user);
                if (check == StateCheck::ByChange)
                    return outcome;
                return onlyWhileActive(*user, std::move(outcome));
            });
    };
}

} // namespace tideloft::service
