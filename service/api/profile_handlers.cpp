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

Response me(Database &database, const User &user)
{
    const Profile profile = profileOf(database, user);
    return jsonResponse(QJsonObject{{u"username"_s, user.name},
                                    {u"bio"_s, profile.bio},
                                    {u"avatarUrl"_s, pictureUrl(profile.pictureName)}});
}

Outcome updateProfile(const Request &request, const User &user)
{
    const QString bio = JsonBody(request).text(u"bio"_s, longestBio);
    return Change([user, bio](Database &database) {
        setBio(database, user, bio);
        return me(database, user);
    });
}

// A search looks at every user.
Response searchUsers(ApiContext &context, Database &database, const Request &request, const User &user)
{
    if (const int wait = context.searches.attempt(QByteArray::number(user.id), context.settings.steadyNow()))
        throw Refusal(429, u"Too many attempts. Please try again in a minute."_s, wait);
    const QString text = queryValue(request, "q").trimmed().toLower();
    if (text.isEmpty())
        return jsonResponse(QJsonArray());
    QJsonArray users;
    for (const QString &name : findNames(database, text, user, mostResults))
        users.append(QJsonObject{{u"username"_s, name}});
    return jsonResponse(users);
}

} // namespace

void addProfileRoutes(Router &router, ApiContext &context)
{
    router.add("GET", "/api/me",
               forSignedIn(context, [](Database &database, const Request &, const User &user) {
                   return me(database, user);
               }));
    router.add("POST", "/api/profile/update",
               forSignedIn(context, [](Database &, const Request &request, const User &user) {
                   return updateProfile(request, user);
               }));
    router.add("GET", "/api/users/search",
               forSignedIn(context, [&context](Database &database, const Request &request, const User &user) {
                   return searchUsers(context, database, request, user);
               }));
}

} // namespace tideloft::service
