// Counting of messages by their nonce.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/stored.h"

#include "service/store/schema.h"

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

StoredCheck checkStored(const QString &file, const QSet<QString> &acknowledged)
{
    service::Store database(file);
    StoredCheck check;
    check.isWhole = database.pragma(u"integrity_check"_s).toString() == u"ok";
    QSet<QString> missing = acknowledged;
    service::Rows rows = database.run(u"SELECT iv, count(*) FROM messages GROUP BY sender_id, iv"_s);
    while (rows.next()) {
        missing.remove(rows.value(0).toString());
        check.doubled += rows.value(1).toLongLong() - 1;
    }
    check.lost = missing.size();
    return check;
}

bool isWhole(const QString &file)
{
    service::Store database(file);
    return database.pragma(u"integrity_check"_s).toString() == u"ok";
}

} // namespace tideloft::bench
