// Whole databases: statements of the engine, and files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/maintenance.h"

#include "service/store/database_file.h"
#include "service/store/database_lock.h"
#include "service/store/schema.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr QLatin1StringView unfinished(".unfinished");
constexpr QLatin1StringView journal("-wal");

[[noreturn]] void fail(const QString &what, const QString &file, const QString &why)
{
    throw StorageError(u"%1 %2: %3"_s.arg(what, file, why).toStdString());
}

QString lastProblem()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool replace(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// A file that is taken away unless it was given its right name.
class Unfinished
{
public:
    explicit Unfinished(const QString &wanted) : path(wanted + unfinished) { QFile::remove(path); }
    Q_DISABLE_COPY_MOVE(Unfinished)
    ~Unfinished() { QFile::remove(path); }

    const QString path;
};

QString problemOfCopy(const QString &file)
{
    try {
        Database database(file);
        requireKnownVersion(database);
        return problemsOf(database).value(0);
    } catch (const StorageError &error) {
        return QString::fromUtf8(error.what());
    }
}

// With a journal beside it the file alone is not all of the database.
void copyWhole(const QString &from, const QString &to)
{
    if (QFileInfo(from + journal).size() > 0)
        fail(u"Could not use"_s, from, u"it is a database in use and no backup"_s);
    QFile source(from);
    if (!source.copy(to))
        fail(u"Could not copy"_s, from, source.errorString());
    makeOwnFile(to);
}

// Until the new file has its name, the old one is whole: after a power cut at any moment there is a database
// with everything in it. Closing the last connection brings the journal into the file.
void takeInJournal(const QString &file)
{
    if (!QFileInfo::exists(file + journal))
        return;
    try {
        Database old(file);
        old.engine().schemaVersion(old);
    } catch (const StorageError &) {
        // The file is damaged. The two are kept as they are.
    }
}

// What is in a journal belongs to the old file and would break the new one. At no moment there is no file
// where the service would make an empty one.
void setAside(const QString &file, const QString &kept)
{
    if (!QFileInfo::exists(file))
        return;
    takeInJournal(file);
    if (!linkFile(file, kept))
        fail(u"Could not keep the old database as"_s, kept, lastProblem());
    if (QFileInfo::exists(file + journal) && !replace(file + journal, kept + journal))
        fail(u"Could not keep the old database as"_s, kept, lastProblem());
    QFile::remove(file + u"-shm"_s);
}

} // namespace

QStringList problemsOf(Database &database)
{
    return database.engine().problems(database);
}

void backUp(Database &database, const QString &file)
{
    if (QFileInfo::exists(file))
        fail(u"Could not write"_s, file, u"it exists already"_s);
    const Unfinished copy(file);
    makeOwnFile(copy.path); // empty, and its owner's alone before anything is written
    database.run(u"VACUUM INTO ?"_s, {copy.path});
    syncFile(copy.path);
    if (!linkFile(copy.path, file)) // unlike a new name, which would replace what was made meanwhile
        fail(u"Could not write"_s, file, lastProblem());
    syncFile(file);
}

void restore(const QString &databaseFile, const QString &copy, const QString &kept)
{
    if (!QFileInfo(copy).isFile())
        fail(u"Could not use"_s, copy, u"there is no such file"_s);
    const DatabaseLock alone(databaseFile, DatabaseLock::Kind::Exclusive);
    const Unfinished next(databaseFile);
    copyWhole(copy, next.path);
    if (const QString problem = problemOfCopy(next.path); !problem.isEmpty())
        fail(u"Could not use"_s, copy, problem);
    const bool existed = QFileInfo::exists(databaseFile);
    giveToOwnerOf(next.path, existed ? databaseFile : QFileInfo(databaseFile).absolutePath());
    syncFile(next.path);
    setAside(databaseFile, kept);
    if (!replace(next.path, databaseFile))
        fail(u"Could not write"_s, databaseFile, lastProblem());
    syncFile(databaseFile);
}

} // namespace tideloft::service
