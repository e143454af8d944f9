// Users as rows that a test writes and counts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/store_threads.h"
#include "tests/service/semaphore.h"

namespace tideloft::tests
{

inline void insertUser(service::Database &database, const QString &name)
{
    database.run(QStringLiteral("INSERT INTO users (name, password, created_at) VALUES (?, '', 0)"), {name});
}

inline qint64 userCount(service::Database &database)
{
    return database.number(QStringLiteral("SELECT count(*) FROM users"));
}

/// As a reader of the store counts them.
inline qint64 userCount(service::StoreThreads &store)
{
    Semaphore done;
    qint64 result = -1;
    store.read([&](service::Database &database) {
        result = userCount(database);
        done.release();
    });
    done.acquire();
    return result;
}

} // namespace tideloft::tests
