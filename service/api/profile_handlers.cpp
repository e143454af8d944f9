// Profile and search.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/profile_handlers.h"

#include "service/api/json_body.h"
#include "service/api/json_reply.h"
#include "service/api/picture_url.h"
#include "service/api/sign_in_sessions.h"
#include "service/store/pictures.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestBio = 1000;
constexpr int mostResults = 20;

Response me(ApiContext &context, const User &user)
{
    return jsonResponse(QJsonObject{{u"username"_s, user.name},
                                    {u"bio"_s, bioOf(context.database, user)},
                                    {u"avatarUrl"_s, pictureUrl(avatarName(context.database, user))}});
}

Response updateProfile(ApiContext &context, const Request &request, const User &user)
{
    setBio(context.database, user, JsonBody(request).text(u"bio"_s, longestBio));
    return me(context, user);
}

Response searchUsers(ApiContext &context, const Request &request, const User &user)
{
    const QString text = queryValue(request, "q").trimmed().toLower();
    if (text.isEmpty())
        return jsonResponse(QJsonArray());
    QJsonArray users;
    for (const QString &name : findNames(context.database, text, user, mostResults))
        users.append(QJsonObject{{u"username"_s, name}});
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
