// Rows of sessions.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/sessions.h"

#include "service/store/array_column.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// A service that was started while the clock was wrong must not end for good what is only thought to be old.
constexpr qint64 graceTime = qint64{60} * 24 * 60 * 60 * 1000;

void endSession(Database &database, const QByteArray &tokenHash)
{
    database.run(u"DELETE FROM sessions WHERE token_hash = ?"_s, {tokenHash});
    database.afterCommit([tokenHash](StoreCache &cache) { cache.sessions.replace(tokenHash, {}); });
}

// Those that run out first go, so that one more has room.
void makeRoom(Database &database, const User &user)
{
    QByteArrayList surplus;
    {
        Rows rows = database.run(u"SELECT token_hash FROM sessions WHERE user_id = ?"
                                 " ORDER BY expires_at DESC, token_hash LIMIT 100000 OFFSET ?"_s,
                                 {user.id, maximumSessions - 1});
        while (rows.next())
            surplus << rows.value(0).toByteArray();
    }
    for (const QByteArray &tokenHash : std::as_const(surplus))
        endSession(database, tokenHash);
}

} // namespace

void addSession(Database &database, const QByteArray &tokenHash, const User &user, qint64 now,
                qint64 expiresAt)
{
    Transaction transaction(database);
    lockUser(database, user);
    database.run(u"DELETE FROM sessions WHERE expires_at <= ?"_s, {now - graceTime});
    makeRoom(database, user);
    database.run(u"INSERT INTO sessions (token_hash, user_id, expires_at) VALUES (?, ?, ?)"
                 " ON CONFLICT (token_hash) DO NOTHING"_s,
                 {tokenHash, user.id, expiresAt});
    transaction.commit();
}

std::optional<CachedSession> sessionOwner(Database &database, const QByteArray &tokenHash)
{
    Rows query = database.run(u"SELECT users.id, users.name, expires_at FROM sessions JOIN users"
                              " ON users.id = user_id WHERE token_hash = ?"_s,
                              {tokenHash});
    if (!query.next())
        return std::nullopt;
    return CachedSession{query.value(0).toLongLong(), query.value(1).toString(), query.value(2).toLongLong()};
}

QHash<QByteArray, CachedSession> sessionOwners(Database &database, const QByteArrayList &tokenHashes)
{
    QHash<QByteArray, CachedSession> owners;
    if (tokenHashes.size() == 1) { // its plan is made once
        if (const std::optional<CachedSession> owner = sessionOwner(database, tokenHashes.constFirst()))
            owners.insert(tokenHashes.constFirst(), *owner);
        return owners;
    }
    const auto inHexadecimal = [](const QByteArray &hash) {
        return u"\\x"_s + QString::fromLatin1(hash.toHex());
    };
    Rows rows = database.run(u"SELECT token_hash, users.id, users.name, expires_at FROM sessions JOIN users"
                             " ON users.id = user_id WHERE token_hash = ANY(CAST(? AS BYTEA[]))"_s,
                             {arrayColumn(tokenHashes, inHexadecimal)});
    while (rows.next())
        owners.insert(rows.value(0).toByteArray(),
                      {rows.value(1).toLongLong(), rows.value(2).toString(), rows.value(3).toLongLong()});
    return owners;
}

qint64 sessionCount(Database &database, qint64 now)
{
    return database.number(u"SELECT count(*) FROM sessions WHERE expires_at > ?"_s, {now});
}

void removeSession(Database &database, const QByteArray &tokenHash)
{
    endSession(database, tokenHash);
}

} // namespace tideloft::service
