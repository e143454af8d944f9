// Rows of attempts. Only a server keeps them, so these statements may use words that a file does not know.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/attempts.h"

#include <QCryptographicHash>

#include <algorithm>
#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Rows with a time far in the future were written before the server's clock was set back. They do not count.
QString thatCount()
{
    return u"at BETWEEN now() - INTERVAL '1 minute' AND now() + INTERVAL '1 minute'"_s;
}

// Each attempt of a key has a number of its own. Of two that want the same number at the same moment the
// second one is not added: it would not have counted the first.
bool addAttempt(Database &database, const QByteArray &who, int most)
{
    static const QString statement =
        u"INSERT INTO attempts (who, number) SELECT CAST(? AS BYTEA), coalesce(max(number), 0) + 1"
        " FROM attempts WHERE who = ? HAVING count(*) FILTER (WHERE %1) < ? ON CONFLICT DO NOTHING"_s.arg(
            thatCount());
    return database.run(statement, {who, who, most}).numRowsAffected() == 1;
}

// Nothing when there are fewer than MOST.
std::optional<int> secondsUntilNext(Database &database, const QByteArray &who, int most)
{
    static const QString statement =
        u"SELECT CAST(ceil(extract(epoch FROM at + INTERVAL '1 minute' - now())) AS BIGINT) FROM attempts"
        " WHERE who = ? AND %1 ORDER BY at DESC LIMIT 1 OFFSET ?"_s.arg(thatCount());
    Rows rows = database.run(statement, {who, most - 1});
    return rows.next() ? std::optional(std::max(1, rows.value(0).toInt())) : std::nullopt;
}

} // namespace

// An attempt that was not added because of another one counts that one the next time, so the loop ends.
int countAttempt(Database &database, const QByteArray &key, int most)
{
    const QByteArray who = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    for (int met = 0; met <= most; ++met) {
        if (addAttempt(database, who, most))
            return 0;
        if (const std::optional<int> seconds = secondsUntilNext(database, who, most))
            return *seconds;
    }
    return 1;
}

void removeOldAttempts(Database &database)
{
    database.run(u"DELETE FROM attempts WHERE NOT (%1)"_s.arg(thatCount()));
}

} // namespace tideloft::service
