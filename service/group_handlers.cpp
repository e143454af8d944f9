// Endpoints of groups. A group that one is no member of is answered like one that does not exist.
#include "service/group_handlers.h"

#include "service/groups.h"
#include "service/json_body.h"
#include "service/picture_handlers.h"
#include "service/sign_in_sessions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestName = 32;
constexpr qsizetype longestDescription = 200;
constexpr qsizetype anyLength = qsizetype{1024} * 1024; // a body is no longer

[[noreturn]] void refuseUnknown()
{
    throw Refusal(404, u"There is no such group."_s);
}

// Blanks around the text do not count, and characters are code points: an emoji is one.
QString trimmedLine(const JsonBody &body, const QString &field, qsizetype longest)
{
    const QString text = body.text(field, anyLength).trimmed();
    if (!isSingleLine(text))
        throw Refusal(400, u"The field \"%1\" must not hold control characters."_s.arg(field));
    if (text.toUcs4().size() > longest)
        throw Refusal(400, u"The field \"%1\" must have at most %2 characters."_s.arg(field).arg(longest));
    return text;
}

Response createGroup(ApiContext &context, const Request &request, const User &user)
{
    const JsonBody body(request);
    const QString name = trimmedLine(body, u"name"_s, longestName);
    if (name.isEmpty())
        throw Refusal(400, u"The field \"name\" must not be empty."_s);
    const QString description = trimmedLine(body, u"description"_s, longestDescription);
    const std::optional<QJsonObject> group = makeGroup(context, user, name, description);
    if (!group)
        throw Refusal(409, u"You have too many groups already (%1)."_s.arg(maximumGroups));
    return jsonResponse(*group, 201);
}

Response giveGroup(ApiContext &context, const QString &groupId, const User &user)
{
    const std::optional<QJsonObject> group = findGroup(context.database, user, groupId);
    if (!group)
        refuseUnknown();
    return jsonResponse(*group);
}

Response uploadIcon(ApiContext &context, const Request &request, const User &user)
{
    const std::optional<qint64> row = findGroupRow(context.database, user, request.parameters.value(0));
    if (!row)
        refuseUnknown();
    const Picture picture = uploadedPicture(request, "icon");
    return jsonResponse(QJsonObject{{u"iconUrl"_s, replaceIcon(context.database, *row, picture)}});
}

} // namespace

void addGroupRoutes(Router &router, ApiContext &context)
{
    router.add("GET", "/api/groups", forSignedIn(context, [&context](const Request &, const User &user) {
                   return jsonResponse(groupsOf(context.database, user));
               }));
    router.add("POST", "/api/groups",
               forSignedIn(context, [&context](const Request &request, const User &user) {
                   return createGroup(context, request, user);
               }));
    router.add("GET", "/api/groups/{id}",
               forSignedIn(context, [&context](const Request &request, const User &user) {
                   return giveGroup(context, request.parameters.value(0), user);
               }));
    router.add(
        "POST", "/api/groups/{id}/icon",
        forSignedIn(context, [&context](const Request &request,
                                        const User &user) { return uploadIcon(context, request, user); }),
        BodySize::Upload);
}

} // namespace tideloft::service
