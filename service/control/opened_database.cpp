// Opening of a database that has to be there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/opened_database.h"

#include "service/control/problem.h"
#include "service/store/engines.h"
#include "service/store/schema.h"

#include <QFile>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Opening would make it. A folder that may not be looked into is reported as such.
std::optional<DatabaseLock> lockOf(const QString &file)
{
    if (file.isEmpty())
        return std::nullopt;
    QFile database(file);
    if (!database.open(QIODevice::ReadOnly))
        throw Problem(u"Could not open the database %1: %2"_s.arg(file, database.errorString()));
    return std::optional<DatabaseLock>(std::in_place, file, DatabaseLock::Kind::Shared);
}

} // namespace

OpenedDatabase::OpenedDatabase(const QString &place, Form form, Database::Access access)
    : lock(lockOf(engineFor(place)->file())),
      database(place, access)
{
    if (form == Form::Present)
        requireCurrentVersion(database);
    else
        requireKnownVersion(database);
}

} // namespace tideloft::service
