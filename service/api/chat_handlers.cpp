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

Outcome send(const ApiContext &context, Database &lookUp, const Request &request, const User &sender)
{
    const JsonBody body(request);
    const QString to = body.text(u"to"_s, longestTypedName);
    const StoredMessage message = storedForm(messageFrom(body), context.nowInMilliseconds());
    const std::optional<User> recipient = findUser(lookUp, to);
    if (!recipient)
        throw Refusal(404, u"There is no user with this name."_s);
    return Change([sender, recipient, message](Database &database) {
        storeMessage(database, sender, *recipient, message);
        return jsonResponse(QJsonObject{{u"to"_s, recipient->name}}, 201);
    });
}

// A conversation that nobody has begun is empty, also when there is nobody to begin it with.
Response historyWith(Database &database, const Request &request, const User &user)
{
    const std::optional<User> peer = findUser(database, request.parameters.value(0));
    return jsonResponse(peer ? historyItems(history(database, user, *peer)) : QJsonArray());
}

Response listConversations(Database &database, const Request &, const User &user)
{
    return jsonResponse(conversationItems(conversations(database, user)));
}

} // namespace

void addChatRoutes(Router &router, ApiContext &context)
{
    router.add("GET", "/api/chat/conversations", forSignedIn(context, &listConversations));
    router.add("GET", "/api/chat/history/{peer}", forSignedIn(context, &historyWith));
    router.add("POST", "/api/chat/send",
               forSignedIn(context, [&context](Database &lookUp, const Request &request, const User &user) {
                   return send(context, lookUp, request, user);
               }));
}

} // namespace tideloft::service
