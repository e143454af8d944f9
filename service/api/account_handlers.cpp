// Accounts. Passwords are hashed away from the event loop, because one hash takes a quarter of a second.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/account_handlers.h"

#include "service/api/json_body.h"
#include "service/api/json_reply.h"
#include "service/api/sign_in_sessions.h"
#include "service/store/user_name.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype shortestPassword = 8;
constexpr qsizetype longestPassword = 256;
constexpr qsizetype longestTypedName = 256; // before trimming

QString newUserName(const JsonBody &body)
{
    const std::optional<QString> name = normalizedUserName(body.text(u"username"_s, longestTypedName));
    if (!name)
        throw Refusal(400, u"A user name has 3 to 32 letters a-z, digits, dots, hyphens or underscores, and "
                           "not only dots."_s);
    return *name;
}

QString newPassword(const JsonBody &body)
{
    const QString password = body.text(u"password"_s, longestPassword);
    if (password.toUcs4().size() < shortestPassword)
        throw Refusal(400, u"A password must have at least 8 characters."_s);
    return password;
}

[[noreturn]] void refuseTakenName()
{
    throw Refusal(409, u"This user name is already taken."_s);
}

Reply registerAccount(ApiContext &context, const Request &request)
{
    const JsonBody body(request);
    const QString name = newUserName(body);
    const QString password = newPassword(body);
    if (findUser(context.database, name))
        refuseTakenName();
    auto work = [&context, name, password, cost = context.settings.scryptCost]() -> Continuation {
        const QByteArray hash = hashPassword(password, cost);
        return [&context, name, hash] {
            if (!addUser(context.database, name, hash,
                         context.nowInMilliseconds())) // somebody may have taken the name meanwhile
                refuseTakenName();
            return jsonResponse(QJsonObject{{u"username"_s, name}}, 201);
        };
    };
    return Deferred{std::move(work), {}};
}

Response signIn(ApiContext &context, const User &user, bool remember)
{
    Response response = jsonResponse(QJsonObject{{u"username"_s, user.name}});
    response.headers.append({"Set-Cookie", beginSession(context, user, remember)});
    return response;
}

// Takes the same time and gives the same answer whether the user exists or not.
Reply login(ApiContext &context, const Request &request)
{
    const JsonBody body(request);
    const std::optional<User> user = findUser(context.database, body.text(u"username"_s, longestTypedName));
    const QString password = body.text(u"password"_s, longestPassword);
    const bool remember = body.boolean(u"rememberMe"_s, false);
    const QByteArray hash =
        user ? passwordHash(context.database, *user) : unmatchableHash(context.settings.scryptCost);
    auto work = [&context, user, password, hash, remember]() -> Continuation {
        const bool matches = passwordMatches(password, hash);
        return [&context, user, matches, remember] {
            if (!user || !matches)
                throw Refusal(401, u"Wrong user name or password."_s);
            return signIn(context, *user, remember);
        };
    };
    return Deferred{std::move(work), {}};
}

Reply logout(ApiContext &context, const Request &request)
{
    Response response = jsonResponse(QJsonObject());
    response.headers.append({"Set-Cookie", endSession(context, request)});
    return response;
}

} // namespace

void addAccountRoutes(Router &router, ApiContext &context)
{
    router.add(
        "POST", "/api/auth/register",
        [&context](const Request &request) { return registerAccount(context, request); }, BodySize::Small);
    router.add(
        "POST", "/api/auth/login", [&context](const Request &request) { return login(context, request); },
        BodySize::Small);
    router.add("POST", "/api/auth/logout",
               forSignedIn(context, [&context](const Request &request, const User &) {
                   return logout(context, request);
               }));
}

} // namespace tideloft::service
