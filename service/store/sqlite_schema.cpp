// The tables in SQLite. A step that was published is never changed: a change is a further step.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/sqlite_engine.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Times are milliseconds since 1970 in UTC. Device keys are kept as they were sent; wrapped keys as JSON
// texts, because nothing here ever looks into them again.
QStringList accountsAndMessages()
{
    return {
        u"CREATE TABLE users (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, password TEXT NOT NULL,"
        " bio TEXT NOT NULL DEFAULT '', created_at INTEGER NOT NULL)"_s,
        u"CREATE TABLE sessions (token_hash BLOB PRIMARY KEY, user_id INTEGER NOT NULL REFERENCES users"
        " ON DELETE CASCADE, expires_at INTEGER NOT NULL) WITHOUT ROWID"_s,
        u"CREATE INDEX sessions_by_expiry ON sessions (expires_at)"_s,
        u"CREATE TABLE device_keys (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " device_id TEXT NOT NULL, device_name TEXT NOT NULL, public_key TEXT NOT NULL,"
        " updated_at INTEGER NOT NULL, PRIMARY KEY (user_id, device_id)) WITHOUT ROWID"_s,
        u"CREATE TABLE messages (id INTEGER PRIMARY KEY AUTOINCREMENT,"
        " sender_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " recipient_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, text TEXT NOT NULL,"
        " iv TEXT NOT NULL, recipient_keys TEXT NOT NULL, sender_keys TEXT NOT NULL,"
        " encrypted INTEGER NOT NULL, created_at INTEGER NOT NULL)"_s,
        u"CREATE INDEX messages_by_pair ON messages (sender_id, recipient_id, id)"_s,
        u"CREATE INDEX messages_by_recipient ON messages (recipient_id)"_s,
        // Which message is the last of each conversation: asked for every few seconds by every client, so it
        // is kept and not searched for.
        u"CREATE TABLE conversations (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " peer_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " last_message_id INTEGER NOT NULL REFERENCES messages ON DELETE CASCADE,"
        " PRIMARY KEY (user_id, peer_id)) WITHOUT ROWID"_s,
    };
}

// A group's identifier is random, so that nobody learns how many there are. A picture belongs to one user or
// to one group, never has a name again that another one had, and goes when its owner does.
QStringList groupsAndPictures()
{
    return {
        u"CREATE TABLE chat_groups (id INTEGER PRIMARY KEY AUTOINCREMENT, public_id TEXT NOT NULL UNIQUE,"
        " name TEXT NOT NULL, description TEXT NOT NULL, created_at INTEGER NOT NULL)"_s,
        u"CREATE TABLE group_members (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " group_id INTEGER NOT NULL REFERENCES chat_groups ON DELETE CASCADE,"
        " PRIMARY KEY (user_id, group_id)) WITHOUT ROWID"_s,
        u"CREATE INDEX group_members_by_group ON group_members (group_id)"_s,
        // The content stands last: whoever wants the rest of a row does not read through it.
        u"CREATE TABLE pictures (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE,"
        " user_id INTEGER UNIQUE REFERENCES users ON DELETE CASCADE,"
        " group_id INTEGER UNIQUE REFERENCES chat_groups ON DELETE CASCADE,"
        " content_type TEXT NOT NULL, content BLOB NOT NULL,"
        " CHECK ((user_id IS NULL) <> (group_id IS NULL)))"_s,
    };
}

// A version is a random number that stands for what a client was given: see versions.h. A message that comes
// twice is found by its nonce. The counts are what quotas are held against. A state is one of UserState.
QStringList versionsAndQuotas()
{
    return {
        u"ALTER TABLE users ADD COLUMN state INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE users ADD COLUMN message_count INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE users ADD COLUMN message_bytes INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE users ADD COLUMN conversations_version INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE users ADD COLUMN groups_version INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE conversations ADD COLUMN version INTEGER NOT NULL DEFAULT 0"_s,
        u"CREATE INDEX messages_by_nonce ON messages (sender_id, recipient_id, iv) WHERE iv <> ''"_s,
        u"CREATE INDEX messages_by_time ON messages (created_at)"_s,
        // Names that may be registered although registration is not open.
        u"CREATE TABLE invitations (name TEXT PRIMARY KEY, created_at INTEGER NOT NULL) WITHOUT ROWID"_s,
        u"CREATE TABLE facts (name TEXT PRIMARY KEY, value INTEGER NOT NULL) WITHOUT ROWID"_s,
        u"UPDATE users SET conversations_version = (random() >> 1) & 0x3fffffffffffffff | 1,"
        " groups_version = (random() >> 1) & 0x3fffffffffffffff | 1"_s,
        u"UPDATE conversations SET version = (random() >> 1) & 0x3fffffffffffffff | 1"_s,
        u"UPDATE users SET message_count = sent.messages, message_bytes = sent.bytes FROM"
        " (SELECT sender_id, count(*) AS messages, sum(length(text) + length(iv) + length(recipient_keys)"
        " + length(sender_keys)) AS bytes FROM messages GROUP BY sender_id) AS sent WHERE sent.sender_id = id"_s,
    };
}

// A message that is removed is looked for in the conversations whose last one it may be.
QStringList removalOfMessages()
{
    return {u"CREATE INDEX conversations_by_last_message ON conversations (last_message_id)"_s};
}

// A position orders the messages of any two users: it is larger than that of every message that one of the
// two has. Messages from before have none and keep the order of their numbers. A name is found by each of its
// ends, so that a search need not look at all of them. Sizes are those in UTF-8.
QStringList positionsAndBounds()
{
    return {
        u"ALTER TABLE users ADD COLUMN last_position INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE messages ADD COLUMN position INTEGER NOT NULL DEFAULT 0"_s,
        u"ALTER TABLE conversations ADD COLUMN begun INTEGER NOT NULL DEFAULT 0"_s,
        u"UPDATE conversations SET begun = 1 WHERE coalesce((SELECT min(id) FROM messages"
        " WHERE sender_id = user_id AND recipient_id = peer_id), 9223372036854775807)"
        " <= coalesce((SELECT min(id) FROM messages"
        " WHERE sender_id = peer_id AND recipient_id = user_id), 9223372036854775807)"_s,
        u"UPDATE users SET message_bytes = coalesce((SELECT sum(length(CAST(text AS BLOB))"
        " + length(CAST(iv AS BLOB)) + length(CAST(recipient_keys AS BLOB)) + length(CAST(sender_keys AS "
        "BLOB)))"
        " FROM messages WHERE sender_id = users.id), 0)"_s,
        u"DROP INDEX messages_by_pair"_s,
        u"CREATE INDEX messages_by_pair ON messages (sender_id, recipient_id, position)"_s,
        u"CREATE INDEX conversations_begun ON conversations (user_id) WHERE begun = 1"_s,
        u"CREATE INDEX sessions_by_user ON sessions (user_id, expires_at)"_s,
        u"CREATE TABLE name_ends (ending TEXT NOT NULL, user_id INTEGER NOT NULL REFERENCES users ON DELETE "
        u"CASCADE,"
        " PRIMARY KEY (ending, user_id)) WITHOUT ROWID"_s,
        u"CREATE INDEX name_ends_by_user ON name_ends (user_id)"_s,
        u"WITH RECURSIVE places (place) AS (SELECT 1 UNION ALL SELECT place + 1 FROM places WHERE place < 32)"
        " INSERT INTO name_ends SELECT substr(name, place), id FROM users JOIN places ON place <= "
        "length(name)"
        " WHERE state <> 2"_s,
    };
}

} // namespace

QList<SchemaStep> SqliteEngine::schemaSteps() const
{
    return {{1, accountsAndMessages()},
            {2, groupsAndPictures()},
            {3, versionsAndQuotas()},
            {4, removalOfMessages()},
            {5, positionsAndBounds()}};
}

} // namespace tideloft::service
