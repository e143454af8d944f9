// Opening of a database that has to be there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/opened_database.h"

#include "service/control/problem.h"
#include "service/store/schema.h"

#include <QFile>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Opening would make it. A folder that may not be looked into is reported as such.
QString existing(const QString &file)
{
    QFile database(file);
    if (!database.open(QIODevice::ReadOnly))
        throw Problem(u"Could not open the database %1: %2"_s.arg(file, database.errorString()));
    return file;
}

} // namespace

OpenedDatabase::OpenedDatabase(const QString &file, Form form)
    : lock(existing(file), DatabaseLock::Kind::Shared),
      database(file)
{
    if (form == Form::Present)
        requireCurrentVersion(database);
    else
        requireKnownVersion(database);
}

} // namespace tideloft::service
