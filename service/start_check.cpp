// Looking at the certificate and the database as a start does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/start_check.h"

#include "service/http/certificate.h"
#include "service/store/database_file.h"
#include "service/store/engines.h"
#include "service/store/schema.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

#include <memory>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QString nearestFolder(const QString &file)
{
    QString folder = QFileInfo(file).absolutePath();
    while (!QFileInfo::exists(folder) && folder != QDir::rootPath())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

void checkCertificate(const Options &options, StartCheck &check)
{
    if (options.certificateFile.isEmpty())
        return;
    try {
        auto context = tlsContext(options.certificateFile, options.keyFile);
        const QString warning = expiryWarning(certificateEnd(context), QDateTime::currentDateTimeUtc());
        if (!warning.isEmpty())
            check.warnings << warning;
    } catch (const std::exception &error) {
        check.problems << QString::fromUtf8(error.what());
    }
}

// Opening a database makes files beside it. Where nobody has it open, all of it stands in its own file.
int versionInFile(const QString &file)
{
    constexpr qsizetype versionAt = 60; // SQLite's file format, section 1.3
    QFile database(file);
    if (!database.open(QIODevice::ReadOnly))
        throw StorageError(database.errorString().toStdString());
    const QByteArray header = database.read(100);
    if (header.isEmpty())
        return 0;
    if (header.size() < 100 || !header.startsWith("SQLite format 3"))
        throw StorageError("file is not a database");
    return qFromBigEndian<qint32>(header.constData() + versionAt);
}

int versionOf(const QString &place)
{
    const QString file = engineFor(place)->file();
    if (!file.isEmpty() && QFileInfo(file + u"-wal"_s).size() == 0)
        return versionInFile(file);
    Database database(place, Database::Access::ReadOnly);
    return database.engine().schemaVersion(database);
}

void checkVersion(const QString &place, StartCheck &check)
{
    try {
        const int version = versionOf(place);
        const std::unique_ptr<Engine> engine = engineFor(place);
        if (version < 0 || version > currentSchemaVersion(*engine))
            check.problems << u"A newer version of the program wrote the database %1"_s.arg(engine->place());
    } catch (const StorageError &error) {
        check.problems << u"%1: %2"_s.arg(engineFor(place)->place(), QString::fromUtf8(error.what()));
    }
}

void checkDatabase(const QString &file, StartCheck &check)
{
    const QString folder = nearestFolder(file);
    if (!QFileInfo(folder).isDir())
        check.problems << u"%1 is no folder, so the database cannot be made in it"_s.arg(folder);
    else if (!mayWrite(folder)) // the journals lie beside the database
        check.problems << u"The folder %1 of the database cannot be written"_s.arg(folder);
    else if (!QFileInfo::exists(file))
        return; // a start makes it
    else if (!mayWrite(file) || !QFileInfo(file).isFile())
        check.problems << u"The database %1 cannot be written"_s.arg(file);
    else
        checkVersion(file, check);
}

} // namespace

StartCheck checkStart(const Options &options, const QString &database)
{
    StartCheck check;
    checkCertificate(options, check);
    try {
        const std::unique_ptr<Engine> engine = engineFor(database);
        if (engine->file().isEmpty())
            checkVersion(database, check);
        else
            checkDatabase(engine->file(), check);
    } catch (const StorageError &error) {
        check.problems << QString::fromUtf8(error.what());
    }
    return check;
}

} // namespace tideloft::service
