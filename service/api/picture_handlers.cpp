// Endpoints of pictures. What comes in is only looked at, never decoded; what goes out may do nothing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/picture_handlers.h"

#include "service/api/json_reply.h"
#include "service/api/picture_type.h"
#include "service/api/picture_url.h"
#include "service/api/sign_in_sessions.h"
#include "service/http/multipart.h"
#include "service/secrets/random.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int nameSize = 20; // bytes; enough that no name is ever guessed or made twice

Outcome uploadAvatar(const ApiContext &context, const Request &request, const User &user)
{
    const Picture picture = uploadedPicture(request, "avatar");
    return Change([&context, user, picture, name = newPictureName()](Database &database) {
        replaceAvatar(database, user, name, picture);
        requireRoomForPictures(context, database, user);
        return jsonResponse(QJsonObject{{u"avatarUrl"_s, pictureUrl(name)}});
    });
}

// A name stands for the same picture for ever, so a client that has the picture need not ask again. But a
// cache that users share must not give the picture to a client that is not signed in.
Response givePicture(Database &database, const Request &request, const User &)
{
    std::optional<Picture> picture = findPicture(database, request.parameters.value(0));
    if (!picture)
        throw Refusal(404, u"There is no such picture."_s);
    Response response;
    response.contentType = picture->contentType;
    response.body = std::move(picture->content);
    response.headers = {{"Cache-Control", "private, max-age=31536000, immutable"},
                        {"Content-Security-Policy", "default-src 'none'; sandbox"}};
    return response;
}

} // namespace

Picture uploadedPicture(const Request &request, QByteArrayView name)
{
    // A page may send forms to any address without asking there, unlike JSON.
    if (request.fromForeignPage)
        throw Refusal(403, u"Pages of other services must not send pictures here."_s);
    const QByteArray content = formField(request, name);
    if (content.isEmpty())
        throw Refusal(400, u"The picture is empty."_s);
    if (content.size() > maximumPictureBytes)
        throw Refusal(413, u"A picture may have at most 5 MB."_s);
    const QByteArray type = pictureType(content);
    if (type.isEmpty())
        throw Refusal(415, u"A picture must be a PNG, JPEG, GIF or WebP file."_s);
    return {type, content};
}

void requireRoomForPictures(const ApiContext &context, Database &database, const User &user)
{
    if (pictureBytes(database, user) > context.settings.pictureBytes)
        throw Refusal(409, u"Your pictures take as much room as the service has for one user."_s);
}

QString newPictureName()
{
    return QString::fromLatin1(randomBytes(nameSize).toHex());
}

void addPictureRoutes(Router &router, ApiContext &context)
{
    router.add(
        "POST", "/api/profile/avatar/upload",
        forSignedIn(context, [&context](Database &, const Request &request,
                                        const User &user) { return uploadAvatar(context, request, user); }),
        BodySize::Upload);
    router.add("GET", "/pictures/{name}", forSignedIn(context, &givePicture));
}

} // namespace tideloft::service
