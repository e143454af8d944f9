// Storing many messages with as few statements as one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/message_batch.h"

#include "service/store/array_column.h"
#include "service/store/batch_decisions.h"
#include "service/store/messages.h"
#include "service/store/versions.h"

#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

using Messages = std::vector<MessageToStore *>;

// In the order of their numbers, so that two transactions never wait for each other in a circle.
Rows lockedUsers(Database &database, const Messages &messages)
{
    std::set<qint64> ids;
    std::set<QString> names;
    for (const MessageToStore *each : messages) {
        ids.insert({each->sender.id, each->recipient.id});
        if (each->recipient.id == 0)
            names.insert(each->recipient.name);
    }
    return database.run(
        u"SELECT id, name, state, last_position, message_count, message_bytes FROM users"
        " WHERE id = ANY(CAST(? AS BIGINT[])) OR name = ANY(CAST(? AS TEXT[])) ORDER BY id FOR UPDATE"_s,
        {arrayColumn(ids), arrayColumn(names)});
}

// Recipients that are not found keep the number 0.
BatchDecisions::Parties lockedParties(Database &database, const Messages &messages)
{
    BatchDecisions::Parties parties;
    std::map<QString, qint64> ids;
    Rows rows = lockedUsers(database, messages);
    while (rows.next()) {
        const User user{rows.value(0).toLongLong(), rows.value(1).toString()};
        Party &party = parties[user.id];
        party.user = user;
        party.state = static_cast<UserState>(rows.value(2).toInt());
        party.lastPosition = rows.value(3).toLongLong();
        party.messages = rows.value(4).toLongLong();
        party.bytes = rows.value(5).toLongLong();
        if (party.state != UserState::Deleted)
            ids[user.name] = user.id;
    }
    for (MessageToStore *each : messages) {
        const auto found = ids.find(each->recipient.name);
        if (each->recipient.id == 0 && found != ids.end())
            each->recipient.id = found->second;
        parties.try_emplace(each->sender.id);
        parties.try_emplace(each->recipient.id);
    }
    return parties;
}

// Asked once the users' rows are locked: what another process has stored meanwhile is seen then. The limits
// keep the server from reading whole tables for many messages.
std::vector<Before> whatCameBefore(Database &database, const Messages &messages)
{
    std::vector<qint64> numbers(messages.size());
    std::iota(numbers.begin(), numbers.end(), qint64{0});
    Rows rows = database.run(
        u"SELECT number, stored, talked"
        " FROM unnest(CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS"
        " TEXT[]), CAST(? AS TEXT[]))"
        " AS waiting (number, sender, recipient, nonce, content)"
        " LEFT JOIN LATERAL (SELECT 1 AS stored FROM messages WHERE sender_id = sender AND"
        " recipient_id = recipient AND iv = nonce AND iv <> '' AND text = content LIMIT 1) AS same"
        " ON TRUE"
        " LEFT JOIN LATERAL (SELECT 1 AS talked FROM conversations WHERE user_id = sender AND"
        " peer_id = recipient LIMIT 1) AS known ON TRUE"_s,
        {arrayColumn(numbers), arrayColumn(messages, [](const auto *each) { return each->sender.id; }),
         arrayColumn(messages, [](const auto *each) { return each->recipient.id; }),
         arrayColumn(messages, [](const auto *each) { return each->message.iv; }),
         arrayColumn(messages, [](const auto *each) { return each->message.text; })});
    std::vector<Before> found(messages.size());
    while (rows.next())
        found.at(rows.value(0).toULongLong()) = {!rows.value(1).isNull(), !rows.value(2).isNull()};
    return found;
}

QVariantList messageColumns(const std::vector<BatchDecisions::Accepted> &accepted)
{
    const auto column = [&accepted](const auto &valueOf) {
        return arrayColumn(accepted, [&](const auto &one) { return valueOf(*one.each); });
    };
    using Each = const MessageToStore &;
    return {column([](Each each) { return each.sender.id; }),
            column([](Each each) { return each.recipient.id; }),
            column([](Each each) { return each.message.text; }),
            column([](Each each) { return each.message.iv; }),
            column([](Each each) { return each.message.recipientKeys; }),
            column([](Each each) { return each.message.senderKeys; }),
            column([](Each each) { return each.message.encrypted ? 1 : 0; }),
            column([](Each each) { return each.message.createdAt; }),
            arrayColumn(accepted, [](const auto &one) { return one.position; })};
}

// A message is known by its sender and its position until it has its number.
QVariantList conversationColumns(Database &database, const BatchDecisions &decisions)
{
    const auto versionOf = [&](const auto &conversation) {
        const qint64 version = newVersion();
        const auto &[user, peer] = conversation.first;
        noteVersion(database, decisions.parties().at(user).user,
                    historySubject(decisions.parties().at(peer).user.name), version);
        return version;
    };
    const auto &all = decisions.conversations();
    return {arrayColumn(all, [](const auto &each) { return each.first.first; }),
            arrayColumn(all, [](const auto &each) { return each.first.second; }),
            arrayColumn(all, [](const auto &each) { return each.second.sender; }),
            arrayColumn(all, [](const auto &each) { return each.second.position; }),
            arrayColumn(all, versionOf),
            arrayColumn(all, [](const auto &each) { return each.second.isBegun ? 1 : 0; })};
}

QVariantList userColumns(Database &database, const BatchDecisions &decisions)
{
    std::vector<Party> changed;
    for (const auto &[id, party] : decisions.parties()) {
        if (party.isChanged)
            changed.push_back(party);
    }
    const auto versionOf = [&database](const Party &party) {
        const qint64 version = newVersion();
        noteVersion(database, party.user, conversationsSubject(), version);
        return version;
    };
    return {arrayColumn(changed, [](const Party &party) { return party.user.id; }),
            arrayColumn(changed, [](const Party &party) { return party.newMessages; }),
            arrayColumn(changed, [](const Party &party) { return party.newBytes; }),
            arrayColumn(changed, [](const Party &party) { return party.lastPosition; }),
            arrayColumn(changed, versionOf)};
}

QString storingStatement()
{
    return u"WITH added AS (INSERT INTO messages (sender_id, recipient_id, text, iv, recipient_keys,"
           " sender_keys, encrypted, created_at, position)"
           " SELECT * FROM unnest(CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS TEXT[]), CAST(?"
           " AS TEXT[]), CAST(? AS TEXT[]), CAST(? AS TEXT[]), CAST(? AS BIGINT[]), CAST(? AS"
           " BIGINT[]), CAST(? AS BIGINT[])) RETURNING id, sender_id, position),"
           " remembered AS (INSERT INTO conversations (user_id, peer_id, last_message_id, version,"
           " begun)"
           " SELECT conversant, peer, id, version, begun FROM unnest(CAST(? AS BIGINT[]), CAST(? AS"
           " BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS"
           " BIGINT[]))"
           " AS latest (conversant, peer, sender, place, version, begun) JOIN added ON sender_id ="
           " sender AND position = place"
           " ON CONFLICT (user_id, peer_id) DO UPDATE SET last_message_id = excluded.last_message_id,"
           " version = excluded.version),"
           " counted AS (UPDATE users SET message_count = message_count + more, message_bytes ="
           " message_bytes + size, last_position = place, conversations_version = version FROM"
           " unnest(CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS BIGINT[]), CAST(? AS"
           " BIGINT[]), CAST(? AS BIGINT[]))"
           " AS counts (counting, more, size, place, version) WHERE id = counting)"
           " SELECT id, sender_id, position FROM added"_s;
}

void store(Database &database, const BatchDecisions &decisions)
{
    if (decisions.accepted().empty())
        return;
    Rows rows = database.run(storingStatement(), messageColumns(decisions.accepted())
                                                     + conversationColumns(database, decisions)
                                                     + userColumns(database, decisions));
    std::map<std::pair<qint64, qint64>, qint64> numbers; // by sender and position
    while (rows.next())
        numbers[{rows.value(1).toLongLong(), rows.value(2).toLongLong()}] = rows.value(0).toLongLong();
    for (const auto &[each, position] : decisions.accepted())
        each->tried = numbers.at({each->sender.id, position});
}

} // namespace

void lockUsers(Database &database, const std::vector<MessageToStore *> &messages)
{
    lockedParties(database, messages);
}

void storeMessages(Database &database, const std::vector<MessageToStore *> &messages)
{
    Transaction transaction(database);
    BatchDecisions decisions(lockedParties(database, messages),
                             [&database](const User &user) { return conversationsBegun(database, user); });
    const std::vector<Before> before = whatCameBefore(database, messages);
    for (std::size_t i = 0; i < messages.size(); ++i)
        decisions.take(*messages[i], before[i]);
    store(database, decisions);
    transaction.commit();
}

} // namespace tideloft::service
