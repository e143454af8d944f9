// Endpoints of messages. The sender is always the user of the session, whatever the request says.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/chat_handlers.h"

#include "service/api/json_body.h"
#include "service/api/json_reply.h"
#include "service/api/message_items.h"
#include "service/api/sign_in_sessions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestTypedName = 256; // before trimming

Response send(ApiContext &context, const Request &request, const User &sender)
{
    const JsonBody body(request);
    const QString to = body.text(u"to"_s, longestTypedName);
    const Message message = messageFrom(body);
    const std::optional<User> recipient = findUser(context.database, to);
    if (!recipient)
        throw Refusal(404, u"There is no user with this name."_s);
    storeMessage(context.database, sender, *recipient, storedForm(message, context.nowInMilliseconds()));
    return jsonResponse(QJsonObject{{u"to"_s, recipient->name}}, 201);
}

// A conversation that nobody has begun is empty, also when there is nobody to begin it with.
Response historyWith(ApiContext &context, const QString &name, const User &user)
{
    const std::optional<User> peer = findUser(context.database, name);
    return jsonResponse(peer ? historyItems(history(context.database, user, *peer)) : QJsonArray());
}

} // namespace

void addChatRoutes(Router &router, ApiContext &context)
{
    router.add("GET", "/api/chat/conversations",
               forSignedIn(context, [&context](const Request &, const User &user) {
                   return jsonResponse(conversationItems(conversations(context.database, user)));
               }));
    router.add("GET", "/api/chat/history/{peer}",
               forSignedIn(context, [&context](const Request &request, const User &user) {
                   return historyWith(context, request.parameters.value(0), user);
               }));
    router.add("POST", "/api/chat/send",
               forSignedIn(context, [&context](const Request &request, const User &user) {
                   return send(context, request, user);
               }));
}

} // namespace tideloft::service
