// Rows and columns that hold versions.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/versions.h"

#include "service/store/account_rules.h"

#include <QRandomGenerator>

#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

void noteVersion(Database &database, const User &user, const QString &subject, qint64 version)
{
    database.afterCommit([key = VersionKey{user.id, subject}, version](StoreCache &cache) {
        cache.versions.replace(key, version);
    });
}

QString conversationsSubject()
{
    return u"conversations"_s;
}

QString groupsSubject()
{
    return u"groups"_s;
}

QString historySubject(const QString &peer)
{
    return u"history/"_s + peer;
}

// Numbers in their order would tell everybody how much the others write.
qint64 newVersion()
{
    return static_cast<qint64>(QRandomGenerator::system()->generate64() >> 1U) + 1;
}

qint64 conversationsVersion(Database &database, const User &user)
{
    return database.number(u"SELECT conversations_version FROM users WHERE id = ?"_s, {user.id});
}

qint64 groupsVersion(Database &database, const User &user)
{
    return database.number(u"SELECT groups_version FROM users WHERE id = ?"_s, {user.id});
}

qint64 historyVersion(Database &database, const User &user, const QString &peer)
{
    const std::optional<QString> name = normalizedUserName(peer);
    if (!name)
        return 0;
    return database.number(u"SELECT version FROM users JOIN conversations ON peer_id = id"
                           " WHERE name = ? AND user_id = ?"_s,
                           {*name, user.id});
}

void conversationsChanged(Database &database, const User &user)
{
    const qint64 version = newVersion();
    database.run(u"UPDATE users SET conversations_version = ? WHERE id = ?"_s, {version, user.id});
    noteVersion(database, user, conversationsSubject(), version);
}

void groupsChanged(Database &database, const User &user)
{
    const qint64 version = newVersion();
    database.run(u"UPDATE users SET groups_version = ? WHERE id = ?"_s, {version, user.id});
    noteVersion(database, user, groupsSubject(), version);
}

void historyChanged(Database &database, const User &user, const User &peer)
{
    const qint64 version = newVersion();
    database.run(u"UPDATE conversations SET version = ? WHERE user_id = ? AND peer_id = ?"_s,
                 {version, user.id, peer.id});
    noteVersion(database, user, historySubject(peer.name), version);
}

} // namespace tideloft::service
