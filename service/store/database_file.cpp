// Calls of the system about files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database_file.h"

#include "service/store/storage_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

void syncPath(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const bool synced = descriptor >= 0 && ::fsync(descriptor) == 0;
    const int problem = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    if (!synced)
        throw StorageError(
            u"Could not write %1 to the disk: %2"_s.arg(path, QString::fromLocal8Bit(std::strerror(problem)))
                .toStdString());
}

} // namespace

void makeFolderOf(const QString &file)
{
    const QString folder = QFileInfo(file).absolutePath();
    if (QDir(folder).exists())
        return;
    if (!QDir().mkpath(folder))
        throw StorageError((u"Could not create the folder of the database: "_s + folder).toStdString());
    QFile::setPermissions(folder, ownerOnly | QFileDevice::ExeOwner);
}

void makeOwnFile(const QString &file)
{
    QFile made(file);
    if (!made.open(QIODevice::ReadWrite, ownerOnly) || !made.setPermissions(ownerOnly))
        throw StorageError(
            (u"Could not open the database %1: %2"_s).arg(file, made.errorString()).toStdString());
}

void giveToOwnerOf(const QString &file, const QString &other)
{
    struct stat owner {
    };
    [[maybe_unused]] const bool given = // which only root may, and only root has to
        ::stat(QFile::encodeName(other).constData(), &owner) == 0
        && ::chown(QFile::encodeName(file).constData(), owner.st_uid, owner.st_gid) == 0;
}

void syncFile(const QString &file)
{
    syncPath(file);
    syncPath(QFileInfo(file).absolutePath());
}

} // namespace tideloft::service
