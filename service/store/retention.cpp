// Statements that remove messages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/retention.h"

#include "service/store/versions.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

struct OldMessage {
    qint64 id = 0;
    qint64 sender = 0;
    qint64 recipient = 0;
    qint64 size = 0;
};

std::vector<OldMessage> oldMessages(Database &database, qint64 time, int most)
{
    Rows rows = database.run(u"SELECT id, sender_id, recipient_id, length(CAST(text AS BLOB))"
                             " + length(CAST(iv AS BLOB)) + length(CAST(recipient_keys AS BLOB))"
                             " + length(CAST(sender_keys AS BLOB)) FROM messages"
                             " WHERE created_at < ? ORDER BY created_at, id LIMIT ? FOR UPDATE"_s,
                             {time, most});
    std::vector<OldMessage> found;
    while (rows.next())
        found.push_back({rows.value(0).toLongLong(), rows.value(1).toLongLong(), rows.value(2).toLongLong(),
                         rows.value(3).toLongLong()});
    return found;
}

// The users of conversations that lose messages, in both directions.
std::set<std::pair<qint64, qint64>> shortened(const std::vector<OldMessage> &messages)
{
    std::set<std::pair<qint64, qint64>> pairs;
    for (const OldMessage &message : messages) {
        pairs.emplace(message.sender, message.recipient);
        pairs.emplace(message.recipient, message.sender);
    }
    return pairs;
}

/// Where a message stands in its conversation: its position, and its number.
using Place = std::pair<qint64, qint64>;

// The clock of a computer may be set back, so what was sent last need not be what is kept longest. What goes
// is passed over, and that is no more than a piece.
Place newestKept(Database &database, qint64 sender, qint64 recipient, const std::set<qint64> &going)
{
    Rows rows = database.run(u"SELECT position, id FROM messages WHERE sender_id = ? AND recipient_id = ?"
                             " ORDER BY position DESC, id DESC LIMIT ?"_s,
                             {sender, recipient, static_cast<qint64>(going.size()) + 1});
    while (rows.next()) {
        const Place place{rows.value(0).toLongLong(), rows.value(1).toLongLong()};
        if (!going.contains(place.second))
            return place;
    }
    return {};
}

QString nameOf(Database &database, qint64 user)
{
    Rows rows = database.run(u"SELECT name FROM users WHERE id = ?"_s, {user});
    return rows.next() ? rows.value(0).toString() : QString();
}

void shortenConversation(Database &database, qint64 user, qint64 peer, const std::set<qint64> &going)
{
    historyChanged(database, {user, {}}, {peer, nameOf(database, peer)});
    const qint64 last = database.number(
        u"SELECT last_message_id FROM conversations WHERE user_id = ? AND peer_id = ?"_s, {user, peer});
    if (!going.contains(last))
        return;
    const qint64 kept =
        std::max(newestKept(database, user, peer, going), newestKept(database, peer, user, going)).second;
    if (kept == 0)
        database.run(u"DELETE FROM conversations WHERE user_id = ? AND peer_id = ?"_s, {user, peer});
    else
        database.run(u"UPDATE conversations SET last_message_id = ? WHERE user_id = ? AND peer_id = ?"_s,
                     {kept, user, peer});
}

void shortenConversations(Database &database, const std::vector<OldMessage> &messages)
{
    std::set<qint64> going;
    for (const OldMessage &message : messages)
        going.insert(message.id);
    std::set<qint64> users;
    for (const auto &[user, peer] : shortened(messages)) {
        shortenConversation(database, user, peer, going);
        users.insert(user);
    }
    for (const qint64 user : users)
        conversationsChanged(database, {user, {}});
}

void forgetInQuotas(Database &database, const std::vector<OldMessage> &messages)
{
    std::map<qint64, std::pair<qint64, qint64>> sums;
    for (const OldMessage &message : messages) {
        auto &[count, size] = sums[message.sender];
        ++count;
        size += message.size;
    }
    for (const auto &[sender, sum] : sums)
        database.run(u"UPDATE users SET message_count = message_count - ?, message_bytes = message_bytes - ?"
                     " WHERE id = ?"_s,
                     {sum.first, sum.second, sender});
}

} // namespace

int removeMessagesBefore(Database &database, qint64 time, int most)
{
    Transaction transaction(database);
    const std::vector<OldMessage> messages = oldMessages(database, time, most);
    shortenConversations(database, messages);
    for (const OldMessage &message : messages)
        database.run(u"DELETE FROM messages WHERE id = ?"_s, {message.id});
    forgetInQuotas(database, messages);
    transaction.commit();
    return static_cast<int>(messages.size());
}

} // namespace tideloft::service
