// Endpoints of messages. The sender is always the user of the session, whatever the request says.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/chat_handlers.h"

#include "service/api/item_list.h"
#include "service/api/json_reply.h"
#include "service/api/message_body.h"
#include "service/api/message_items.h"
#include "service/api/sign_in_sessions.h"
#include "service/api/versioned_list.h"
#include "service/store/account_rules.h"
#include "service/store/versions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int mostConversations = 2000; // as many as the client lists

[[noreturn]] void refuseUnknownUser()
{
    throw Refusal(404, u"There is no user with this name."_s);
}

void refuseWhatIsNotStored(Stored stored)
{
    if (stored == Stored::NoSender) // disabled since the session was looked up
        throw signInFirst();
    if (stored == Stored::NoRecipient) // deleted since the look-up
        refuseUnknownUser();
    if (stored == Stored::TooManyMessages)
        throw Refusal(409, u"You have sent as many messages as the service keeps for one user."_s);
    if (stored == Stored::TooManyBytes)
        throw Refusal(409, u"Your messages take as much room as the service has for one user."_s);
    if (stored == Stored::TooManyConversations)
        throw Refusal(409, u"You have as many conversations as the service keeps for one user."_s);
}

// Where each question is a way to another machine, the recipient is found when the message is stored.
User recipientNamed(const ApiContext &context, Database &lookUp, const QString &to)
{
    if (context.store.isShared()) {
        if (const std::optional<QString> name = normalizedUserName(to))
            return {0, *name};
    } else if (const std::optional<User> found = findUser(lookUp, to)) {
        return *found;
    }
    refuseUnknownUser();
}

Outcome send(const ApiContext &context, Database &lookUp, const Request &request, const User &sender)
{
    const JsonBody body(request);
    const QString to = body.text(u"to"_s, longestTypedName);
    StoredMessage message = storedForm(messageFrom(body), context.nowInMilliseconds());
    const User recipient = recipientNamed(context, lookUp, to);
    const auto waiting = std::make_shared<MessageToStore>(
        MessageToStore{sender, recipient, std::move(message), context.settings.quota});
    return Send{waiting, [to = recipient.name](Stored stored) {
                    refuseWhatIsNotStored(stored);
                    return jsonResponse(QJsonObject{{u"to"_s, to}}, 201);
                }};
}

QString peerName(const Request &request)
{
    return request.parameters.value(0);
}

VersionedList histories(ApiContext &context)
{
    const int most = context.settings.historyLimit;
    return {.subject =
                [](const Request &request) {
                    return historySubject(normalizedUserName(peerName(request)).value_or(QString()));
                },
            .version = [](Database &database, const Request &request,
                          const User &user) { return historyVersion(database, user, peerName(request)); },
            .content =
                [&context, most](Database &database, const Request &request, const User &user) {
                    ItemList items(*context.settings.transfers, user.id);
                    // A conversation that nobody has begun is empty, also when there is nobody to begin it
                    // with.
                    if (const std::optional<User> peer = findUserOrDeleted(database, peerName(request)))
                        visitHistory(database, user, *peer, most, [&](const MessageRow &row) {
                            return items.add(messageItem(row, user.name, peer->name));
                        });
                    return items.reversedResponse();
                },
            .most = most};
}

VersionedList conversationLists(ApiContext &context)
{
    return {.subject = [](const Request &) { return conversationsSubject(); },
            .version = [](Database &database, const Request &,
                          const User &user) { return conversationsVersion(database, user); },
            .content =
                [&context](Database &database, const Request &, const User &user) {
                    ItemList items(*context.settings.transfers, user.id);
                    visitConversations(database, user, mostConversations, [&](const MessageRow &row) {
                        return items.add(messageItem(row, user.name, row.peer));
                    });
                    return items.response();
                },
            .most = mostConversations};
}

} // namespace

void addChatRoutes(Router &router, ApiContext &context)
{
    router.add("GET", "/api/chat/conversations", forUnchanged(context, conversationLists(context)));
    router.add("GET", "/api/chat/history/{peer}", forUnchanged(context, histories(context)));
    router.add("POST", "/api/chat/send",
               forSignedIn(
                   context,
                   [&context](Database &lookUp, const Request &request, const User &user) {
                       return send(context, lookUp, request, user);
                   },
                   StateCheck::ByChange));
}

} // namespace tideloft::service
