// Profile and search.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/profile_handlers.h"

#include "service/api/json_body.h"
#include "service/store/pictures.h"
#include "service/api/sign_in_sessions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestBio = 1000;
constexpr int mostResults = 20;

Response me(ApiContext &context, const User &user)
{
    QSqlQuery query = context.database.run(u"SELECT bio FROM users WHERE id = ?"_s, {user.id});
    query.next();
    const QString bio = query.value(0).toString();
    return jsonResponse(QJsonObject{
        {u"username"_s, user.name}, {u"bio"_s, bio}, {u"avatarUrl"_s, avatarUrl(context.database, user)}});
}

Response updateProfile(ApiContext &context, const Request &request, const User &user)
{
    const QString bio = JsonBody(request).text(u"bio"_s, longestBio);
    context.database.run(u"UPDATE users SET bio = ? WHERE id = ?"_s, {bio, user.id});
    return me(context, user);
}

// instr() takes the text as it is: "%" and "_" are no wildcards, and "_" may stand in a name.
Response searchUsers(ApiContext &context, const Request &request, const User &user)
{
    const QString text = queryValue(request, "q").trimmed().toLower();
    if (text.isEmpty())
        return jsonResponse(QJsonArray());
    QSqlQuery query = context.database.run(u"SELECT name FROM users WHERE instr(name, ?) > 0 AND id <> ?"
                                           " ORDER BY instr(name, ?) > 1, name LIMIT ?"_s,
                                           {text, user.id, text, mostResults});
    QJsonArray users;
    while (query.next())
        users.append(QJsonObject{{u"username"_s, query.value(0).toString()}});
    return jsonResponse(users);
}

} // namespace

void addProfileRoutes(Router &router, ApiContext &context)
{
    router.add("GET", "/api/me", forSignedIn(context, [&context](const Request &, const User &user) {
                   return me(context, user);
               }));
    router.add("POST", "/api/profile/update",
               forSignedIn(context, [&context](const Request &request, const User &user) {
                   return updateProfile(context, request, user);
               }));
    router.add("GET", "/api/users/search",
               forSignedIn(context, [&context](const Request &request, const User &user) {
                   return searchUsers(context, request, user);
               }));
}

} // namespace tideloft::service
