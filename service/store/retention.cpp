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
    Rows rows = database.run(u"SELECT id, sender_id, recipient_id, length(text) + length(iv)"
                             " + length(recipient_keys) + length(sender_keys) FROM messages"
                             " WHERE created_at < ? ORDER BY created_at, id LIMIT ?"_s,
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

qint64 newestKept(Database &database, qint64 sender, qint64 recipient, qint64 time)
{
    return database.number(u"SELECT id FROM messages WHERE sender_id = ? AND recipient_id = ?"
                           " AND created_at >= ? ORDER BY id DESC LIMIT 1"_s,
                           {sender, recipient, time});
}

QString nameOf(Database &database, qint64 user)
{
    Rows rows = database.run(u"SELECT name FROM users WHERE id = ?"_s, {user});
    return rows.next() ? rows.value(0).toString() : QString();
}

// The clock of a computer may be set back, so what was sent last need not be what is kept longest.
void shortenConversation(Database &database, qint64 user, qint64 peer, qint64 time)
{
    const qint64 last =
        std::max(newestKept(database, user, peer, time), newestKept(database, peer, user, time));
    if (last == 0)
        database.run(u"DELETE FROM conversations WHERE user_id = ? AND peer_id = ?"_s, {user, peer});
    else
        database.run(u"UPDATE conversations SET last_message_id = ? WHERE user_id = ? AND peer_id = ?"_s,
                     {last, user, peer});
    historyChanged(database, {user, {}}, {peer, nameOf(database, peer)});
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
    for (const auto &[user, peer] : shortened(messages))
        shortenConversation(database, user, peer, time);
    for (const OldMessage &message : messages)
        database.run(u"DELETE FROM messages WHERE id = ?"_s, {message.id});
    forgetInQuotas(database, messages);
    transaction.commit();
    return static_cast<int>(messages.size());
}

} // namespace tideloft::service
