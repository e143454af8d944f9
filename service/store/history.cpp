// Statements that read messages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/history.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// A text that is read as bytes stays in the UTF-8 that it is stored in.
QString messageColumns()
{
    return u"position, messages.id, sender_id, CAST(text AS BLOB), CAST(iv AS BLOB), CAST(sender_keys AS "
           u"BLOB),"
           " CAST(recipient_keys AS BLOB), encrypted, messages.created_at"_s;
}

MessageRow messageFromRow(const Rows &row, const User &user)
{
    return {.peer = {},
            .isFromUser = row.value(2).toLongLong() == user.id,
            .text = row.value(3).toByteArray(),
            .iv = row.value(4).toByteArray(),
            .senderKeys = row.value(5).toByteArray(),
            .recipientKeys = row.value(6).toByteArray(),
            .encrypted = row.value(7).toBool(),
            .createdAt = row.value(8).toLongLong()};
}

} // namespace

// Order and choice go by position and not by time: the clock of a computer may be set back. Messages from
// before there were positions have none, and their numbers tell their order. What one writes to oneself is
// found by the first half alone.
void visitHistory(Database &database, const User &user, const User &peer, int most,
                  const MessageVisitor &visit)
{
    static const QString half =
        u"SELECT "_s + messageColumns() + u" FROM messages WHERE sender_id = ? AND recipient_id = ?"_s;
    static const QString statement =
        half + u" UNION ALL "_s + half + u" AND sender_id <> recipient_id ORDER BY 1 DESC, 2 DESC LIMIT ?"_s;
    Rows rows = database.run(statement, {user.id, peer.id, peer.id, user.id, most});
    while (rows.next()) {
        if (!visit(messageFromRow(rows, user)))
            return;
    }
}

void visitConversations(Database &database, const User &user, int most, const MessageVisitor &visit)
{
    static const QString statement =
        u"SELECT "_s + messageColumns()
        + u", peer.name FROM conversations JOIN messages ON messages.id = last_message_id"
          " JOIN users AS peer ON peer.id = peer_id WHERE user_id = ?"
          " ORDER BY position DESC, last_message_id DESC LIMIT ?"_s;
    Rows rows = database.run(statement, {user.id, most});
    while (rows.next()) {
        MessageRow row = messageFromRow(rows, user);
        row.peer = rows.value(9).toString();
        if (!visit(row))
            return;
    }
}

} // namespace tideloft::service
