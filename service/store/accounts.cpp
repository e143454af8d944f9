// Statements about accounts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"

#include "service/store/conflicts.h"

#include <limits>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

void setState(Database &database, const User &user, UserState state)
{
    database.run(u"UPDATE users SET state = ? WHERE id = ?"_s, {static_cast<int>(state), user.id});
}

// A group that nobody is a member of any more is gone, with its icon.
void leaveGroups(Database &database, const User &user)
{
    QList<qint64> left;
    {
        Rows groups = database.run(u"SELECT group_id FROM group_members WHERE user_id = ?"_s, {user.id});
        while (groups.next())
            left << groups.value(0).toLongLong();
    }
    database.run(u"DELETE FROM group_members WHERE user_id = ?"_s, {user.id});
    for (const qint64 group : std::as_const(left))
        database.run(u"DELETE FROM chat_groups WHERE id = ? AND NOT EXISTS"
                     " (SELECT 1 FROM group_members WHERE group_id = ?)"_s,
                     {group, group});
}

// A message stays as long as one of the two who have it does. The user who is being deleted has no more than
// MOST of these messages less afterwards. True when there were fewer.
bool removeMessagesOfNobody(Database &database, const User &user, int most)
{
    const int gone = static_cast<int>(UserState::Deleted);
    const Rows sent = database.run(
        u"DELETE FROM messages WHERE id IN (SELECT id FROM messages WHERE sender_id = ? AND recipient_id IN"
        " (SELECT id FROM users WHERE state = ? OR id = ?) LIMIT ?)"_s,
        {user.id, gone, user.id, most});
    const Rows got = database.run(
        u"DELETE FROM messages WHERE id IN (SELECT id FROM messages WHERE recipient_id = ? AND sender_id IN"
        " (SELECT id FROM users WHERE state = ?) LIMIT ?)"_s,
        {user.id, gone, most});
    return sent.numRowsAffected() < most && got.numRowsAffected() < most;
}

bool removeConversations(Database &database, const User &user, int most)
{
    return database
               .run(u"DELETE FROM conversations WHERE user_id = ? AND peer_id IN"
                    " (SELECT peer_id FROM conversations WHERE user_id = ? LIMIT ?)"_s,
                    {user.id, user.id, most})
               .numRowsAffected()
           < most;
}

// True when nothing is left that may be large. A conversation goes before its last message.
bool removePiece(Database &database, const User &user)
{
    constexpr int pieceSize = 100;
    Transaction transaction(database);
    const bool all =
        removeConversations(database, user, pieceSize) && removeMessagesOfNobody(database, user, pieceSize);
    transaction.commit();
    return all;
}

// Others may have written meanwhile, so the little that has come since is looked for once more.
void removeRest(Database &database, const User &user)
{
    constexpr int any = std::numeric_limits<int>::max();
    Transaction transaction(database);
    setState(database, user, UserState::Deleted);
    database.run(u"UPDATE users SET password = '', bio = '' WHERE id = ?"_s, {user.id});
    database.run(u"DELETE FROM name_ends WHERE user_id = ?"_s, {user.id});
    database.run(u"DELETE FROM device_keys WHERE user_id = ?"_s, {user.id});
    database.run(u"DELETE FROM pictures WHERE user_id = ?"_s, {user.id});
    leaveGroups(database, user);
    removeConversations(database, user, any);
    removeMessagesOfNobody(database, user, any);
    transaction.commit();
}

} // namespace

void visitAccounts(Database &database, qint64 now, const std::function<void(const Account &)> &visit)
{
    Rows rows = database.run(
        u"SELECT name, state, created_at, message_count,"
        " (SELECT count(*) FROM device_keys WHERE user_id = users.id),"
        " (SELECT count(*) FROM sessions WHERE user_id = users.id AND expires_at > ?) FROM users ORDER BY name"_s,
        {now});
    while (rows.next())
        visit({rows.value(0).toString(), static_cast<UserState>(rows.value(1).toInt()),
               rows.value(2).toLongLong(), rows.value(3).toLongLong(), rows.value(4).toLongLong(),
               rows.value(5).toLongLong()});
}

int endSessions(Database &database, const User &user)
{
    const Rows ended = database.run(u"DELETE FROM sessions WHERE user_id = ?"_s, {user.id});
    database.afterCommit([](StoreCache &cache) { cache.sessions.forgetAll(); });
    return ended.numRowsAffected();
}

void disableUser(Database &database, const User &user)
{
    Transaction transaction(database);
    setState(database, user, UserState::Disabled);
    endSessions(database, user); // also that of a sign-in which came before
    transaction.commit();
}

void enableUser(Database &database, const User &user)
{
    setState(database, user, UserState::Active);
}

void setPassword(Database &database, const User &user, const QByteArray &hash)
{
    Transaction transaction(database);
    database.run(u"UPDATE users SET password = ? WHERE id = ?"_s, {QString::fromLatin1(hash), user.id});
    endSessions(database, user);
    transaction.commit();
}

void deleteUser(Database &database, const User &user, const std::function<void()> &betweenPieces)
{
    disableUser(database, user);
    while (!againAfterConflicts([&] { return removePiece(database, user); }))
        betweenPieces();
    againAfterConflicts([&] { removeRest(database, user); });
}

} // namespace tideloft::service
