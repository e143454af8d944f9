// Choice of the engine.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/engines.h"

#include "service/store/postgresql_engine.h"
#include "service/store/sqlite_engine.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

std::unique_ptr<Engine> engineFor(const QString &place)
{
    if (isPostgresqlUrl(place))
        return std::make_unique<PostgresqlEngine>(place);
    constexpr QLatin1StringView scheme("sqlite:");
    return std::make_unique<SqliteEngine>(place.startsWith(scheme) ? place.sliced(scheme.size()) : place);
}

} // namespace tideloft::service
