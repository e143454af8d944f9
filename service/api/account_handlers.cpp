// Accounts. Passwords are hashed on threads of their own, because one hash takes a quarter of a second.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/account_handlers.h"

#include "service/api/counted_attempts.h"
#include "service/api/json_body.h"
#include "service/api/json_reply.h"
#include "service/api/sign_in_sessions.h"
#include "service/api/tasks.h"
#include "service/store/account_rules.h"
#include "service/store/invitations.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QString newUserName(const JsonBody &body)
{
    const std::optional<QString> name = normalizedUserName(body.text(u"username"_s, longestTypedName));
    if (!name)
        throw Refusal(400, userNameRule());
    return *name;
}

QString newPassword(const JsonBody &body)
{
    const QString password = body.text(u"password"_s, longestPassword);
    if (!isPasswordLength(password)) // one that is too long is refused above
        throw Refusal(400, passwordRule());
    return password;
}

[[noreturn]] void refuseTakenName()
{
    throw Refusal(409, u"This user name is already taken."_s);
}

// An account that does not exist is counted too: a limit must not tell whether there is one.
QList<CountedAttempt> signInsOf(const Request &request, const QString &typedName)
{
    const QByteArray account = normalizedUserName(typedName).value_or(typedName).toUtf8();
    return {{Attempted::SignInFromAddress, request.peer}, {Attempted::SignInToAccount, account}};
}

void requireInvitation(const ApiContext &context, Database &database, const QString &name)
{
    if (context.settings.registration == Registration::Closed)
        throw Refusal(403,
                      u"New accounts cannot be created here. Please ask the person who runs the service."_s);
    if (context.settings.registration == Registration::Invite && !isInvited(database, name))
        throw Refusal(403, u"This user name is not invited. Please ask the person who runs the service."_s);
}

// No two hashes are alike, not even of one password.
bool isAdded(Database &database, const QString &name, const QByteArray &hash)
{
    const std::optional<Credentials> known = findCredentials(database, name);
    return known && known->hash == hash;
}

Response addAccount(const ApiContext &context, Database &database, const QString &name,
                    const QByteArray &hash)
{
    const Response added = jsonResponse(QJsonObject{{u"username"_s, name}}, 201);
    if (isAdded(database, name, hash)) // this change has run before; its commit was not confirmed
        return added;
    requireInvitation(context, database, name);                      // it may have been revoked meanwhile
    if (!addUser(database, name, hash, context.nowInMilliseconds())) // the name may be taken by now
        refuseTakenName();
    removeInvitation(database, name);
    return added;
}

Outcome makeAccount(ApiContext &context, Database &lookUp, const QString &name, const QString &password)
{
    requireInvitation(context, lookUp, name);
    if (findUserOrDeleted(lookUp, name))
        refuseTakenName();
    return SlowWork{[&context, name, password]() -> Change {
        const QByteArray hash = hashPassword(password, context.settings.scryptCost);
        return
            [&context, name, hash](Database &database) { return addAccount(context, database, name, hash); };
    }};
}

Outcome registerAccount(ApiContext &context, Database &database, const Request &request)
{
    const JsonBody body(request);
    const QString name = newUserName(body);
    const QString password = newPassword(body);
    return onceCounted(context, database, {{Attempted::Registration, request.peer}},
                       [&context, name, password](Database &lookUp) {
                           return makeAccount(context, lookUp, name, password);
                       });
}

[[noreturn]] void refuseWrong()
{
    throw Refusal(401, u"Wrong user name or password."_s);
}

// The account may have been disabled or deleted, or its password changed, while this one was hashed.
Response signIn(const ApiContext &context, Database &database, const User &user, const QByteArray &hash,
                const QByteArray &token, bool remember)
{
    const Credentials known = lockCredentials(database, user);
    if (known.hash != hash)
        refuseWrong();
    if (known.state != UserState::Active)
        throw Refusal(403, u"This account is disabled. Please ask the person who runs the service."_s);
    Response response = jsonResponse(QJsonObject{{u"username"_s, user.name}});
    response.headers.append({"Set-Cookie", beginSession(context, database, user, token, remember)});
    return response;
}

// Takes the same time and gives the same answer whether the user exists or not.
Outcome checkPassword(const ApiContext &context, Database &lookUp, const QString &name,
                      const QString &password, bool remember)
{
    const std::optional<Credentials> known = findCredentials(lookUp, name);
    const QByteArray hash = known ? known->hash : unmatchableHash(context.settings.scryptCost);
    return SlowWork{[&context, known, password, hash, remember]() -> Change {
        const bool matches = passwordMatches(password, hash);
        if (!known || !matches)
            refuseWrong();
        return [&context, user = known->user, hash, token = newSessionToken(), remember](Database &database) {
            return signIn(context, database, user, hash, token, remember);
        };
    }};
}

Outcome login(ApiContext &context, Database &database, const Request &request)
{
    const JsonBody body(request);
    const QString name = body.text(u"username"_s, longestTypedName);
    const QString password = body.text(u"password"_s, longestPassword);
    const bool remember = body.boolean(u"rememberMe"_s, false);
    return onceCounted(context, database, signInsOf(request, name),
                       [&context, name, password, remember](Database &lookUp) {
                           return checkPassword(context, lookUp, name, password, remember);
                       });
}

Outcome logout(const ApiContext &context, const Request &request)
{
    return Change([&context, request](Database &database) {
        Response response = jsonResponse(QJsonObject());
        response.headers.append({"Set-Cookie", endSession(context, database, request)});
        return response;
    });
}

} // namespace

void addAccountRoutes(Router &router, ApiContext &context)
{
    router.add(
        "POST", "/api/auth/register",
        [&context](const Request &request) {
            return answerAfter(context, request.peer, [&context, request](Database &lookUp) {
                return registerAccount(context, lookUp, request);
            });
        },
        BodySize::Small);
    router.add(
        "POST", "/api/auth/login",
        [&context](const Request &request) {
            return answerAfter(context, request.peer, [&context, request](Database &lookUp) {
                return login(context, lookUp, request);
            });
        },
        BodySize::Small);
    router.add("POST", "/api/auth/logout",
               forSignedIn(context, [&context](Database &, const Request &request, const User &) {
                   return logout(context, request);
               }));
}

} // namespace tideloft::service
