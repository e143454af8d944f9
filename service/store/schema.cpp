// Bringing the tables from one form to the next.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"

#include "service/store/conflicts.h"

#include <QStringList>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

int versionOf(Database &database)
{
    return database.engine().schemaVersion(database);
}

void refuseNewer(const Database &database, int version)
{
    const int known = currentSchemaVersion(database.engine());
    if (version >= 0 && version <= known)
        return;
    throw StorageError(u"The database %1 has version %2, and this program knows versions up to %3: a newer "
                       "version of the program wrote it"_s.arg(database.place())
                           .arg(version)
                           .arg(known)
                           .toStdString());
}

// Another process may have taken the step meanwhile, or takes it at the same moment.
int takeStep(Database &database, const SchemaStep &step)
{
    try {
        Transaction transaction(database);
        const int version = versionOf(database);
        refuseNewer(database, version);
        if (version >= step.version)
            return version;
        for (const QString &statement : step.statements)
            database.run(statement);
        database.engine().setSchemaVersion(database, step.version);
        transaction.commit();
        return step.version;
    } catch (const StorageError &) {
        const int version = versionOf(database);
        if (version < step.version)
            throw;
        return version;
    }
}

} // namespace

int currentSchemaVersion(const Engine &engine)
{
    return engine.schemaSteps().constLast().version;
}

void requireKnownVersion(Database &database)
{
    const int version = versionOf(database);
    refuseNewer(database, version);
    if (version == 0)
        throw StorageError((database.place() + u" is no database of the service"_s).toStdString());
}

void requireCurrentVersion(Database &database)
{
    requireKnownVersion(database);
    if (versionOf(database) != currentSchemaVersion(database.engine()))
        throw StorageError(
            (u"The database %1 has an older form: the service brings it to the present one when "
             "it starts"_s)
                .arg(database.place())
                .toStdString());
}

void migrate(Database &database)
{
    int version = versionOf(database);
    refuseNewer(database, version);
    for (const SchemaStep &step : database.engine().schemaSteps()) {
        if (version < step.version)
            version = againAfterConflicts([&] { return takeStep(database, step); });
    }
}

} // namespace tideloft::service
