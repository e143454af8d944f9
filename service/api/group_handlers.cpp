// Endpoints of groups. A group that one is no member of is answered like one that does not exist.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/group_handlers.h"

#include "service/api/json_body.h"
#include "service/api/json_reply.h"
#include "service/api/picture_handlers.h"
#include "service/api/picture_url.h"
#include "service/api/sign_in_sessions.h"
#include "service/api/versioned_list.h"
#include "service/secrets/random.h"
#include "service/store/groups.h"
#include "service/store/versions.h"

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int idSize = 16; // bytes
constexpr qsizetype longestName = 32;
constexpr qsizetype longestDescription = 200;
constexpr qsizetype anyLength = qsizetype{1024} * 1024; // a body is no longer

[[noreturn]] void refuseUnknownGroup()
{
    throw Refusal(404, u"There is no such group."_s);
}

bool isLayout(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\t';
}

// Characters are code points: an emoji is one.
void checkCharacters(const QString &text, const QString &field, qsizetype longest)
{
    if (std::any_of(text.begin(), text.end(),
                    [](QChar c) { return c.category() == QChar::Other_Control && !isLayout(c); }))
        throw Refusal(400, u"The field \"%1\" must not hold control characters."_s.arg(field));
    if (text.toUcs4().size() > longest)
        throw Refusal(400, u"The field \"%1\" must have at most %2 characters."_s.arg(field).arg(longest));
}

// A name of characters that nobody sees looks like none.
bool isVisible(const QString &text)
{
    const QList<uint> characters = text.toUcs4();
    return std::any_of(characters.begin(), characters.end(), [](uint c) {
        return !QChar::isSpace(c) && QChar::category(c) != QChar::Other_Format;
    });
}

// What is pasted into a line keeps its line breaks and tabs, and nobody sees them there: all white space is
// a blank.
QString groupName(const JsonBody &body)
{
    const QString field = u"name"_s;
    const QString name = body.text(field, anyLength).simplified();
    checkCharacters(name, field, longestName);
    if (!isVisible(name))
        throw Refusal(400, u"The field \"name\" must not be empty."_s);
    return name;
}

QString groupDescription(const JsonBody &body)
{
    const QString field = u"description"_s;
    const QString description = body.text(field, anyLength).trimmed();
    checkCharacters(description, field, longestDescription);
    return description;
}

QJsonObject groupItem(const Group &group)
{
    return {{u"groupId"_s, group.id},
            {u"name"_s, group.name},
            {u"description"_s, group.description},
            {u"iconUrl"_s, pictureUrl(group.iconName)}};
}

Response listGroups(Database &database, const Request &, const User &user)
{
    QJsonArray items;
    for (const Group &group : groupsOf(database, user))
        items.append(groupItem(group));
    return jsonResponse(items);
}

Outcome createGroup(const ApiContext &context, const Request &request, const User &user)
{
    const JsonBody body(request);
    const QString name = groupName(body);
    const Group group{QString::fromLatin1(randomBytes(idSize).toHex()), name, groupDescription(body), {}};
    return Change([user, group, now = context.nowInMilliseconds()](Database &database) {
        if (!addGroup(database, user, group, now))
            throw Refusal(409, u"You have too many groups already (%1)."_s.arg(maximumGroups));
        return jsonResponse(groupItem(group), 201);
    });
}

Response giveGroup(Database &database, const Request &request, const User &user)
{
    const std::optional<Group> group = findGroup(database, user, request.parameters.value(0));
    if (!group)
        refuseUnknownGroup();
    return jsonResponse(groupItem(*group));
}

Outcome uploadIcon(const ApiContext &context, Database &lookUp, const Request &request, const User &user)
{
    const std::optional<qint64> row = findGroupRow(lookUp, user, request.parameters.value(0));
    if (!row)
        refuseUnknownGroup();
    const Picture picture = uploadedPicture(request, "icon");
    return Change([&context, user, row, picture, name = newPictureName()](Database &database) {
        replaceIcon(database, *row, name, picture);
        requireRoomForPictures(context, database, user);
        return jsonResponse(QJsonObject{{u"iconUrl"_s, pictureUrl(name)}});
    });
}

} // namespace

void addGroupRoutes(Router &router, ApiContext &context)
{
    router.add(
        "GET", "/api/groups",
        forUnchanged(context, {.subject = [](const Request &) { return groupsSubject(); },
                               .version = [](Database &database, const Request &,
                                             const User &user) { return groupsVersion(database, user); },
                               .content = &listGroups,
                               .most = maximumGroups}));
    router.add("POST", "/api/groups",
               forSignedIn(context, [&context](Database &, const Request &request, const User &user) {
                   return createGroup(context, request, user);
               }));
    router.add("GET", "/api/groups/{id}", forSignedIn(context, &giveGroup));
    router.add("POST", "/api/groups/{id}/icon",
               forSignedIn(context,
                           [&context](Database &lookUp, const Request &request, const User &user) {
                               return uploadIcon(context, lookUp, request, user);
                           }),
               BodySize::Upload);
}

} // namespace tideloft::service
