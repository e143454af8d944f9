// Rows of facts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/facts.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

void setFact(Database &database, const QString &name, qint64 value)
{
    database.run(u"INSERT INTO facts (name, value) VALUES (?, ?)"
                 " ON CONFLICT (name) DO UPDATE SET value = excluded.value"_s,
                 {name, value});
}

} // namespace tideloft::service
