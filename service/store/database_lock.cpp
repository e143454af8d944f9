// Locking with flock.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database_lock.h"

#include "service/store/database_file.h"
#include "service/store/storage_error.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

[[noreturn]] void fail(const QString &what, const QString &file)
{
    const int problem = errno;
    throw StorageError(
        u"%1 %2: %3"_s.arg(what, file, QString::fromLocal8Bit(std::strerror(problem))).toStdString());
}

int openLock(const QString &file)
{
    const bool isNew = !QFileInfo::exists(file);
    const int descriptor =
        ::open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0)
        fail(u"Could not open"_s, file);
    if (isNew)
        giveToOwnerOf(file, QFileInfo(file).absolutePath());
    return descriptor;
}

} // namespace

DatabaseLock::DatabaseLock(const QString &databaseFile, Kind kind)
{
    makeFolderOf(databaseFile);
    descriptor = openLock(databaseFile + u".lock"_s);
    if (::flock(descriptor, (kind == Kind::Shared ? LOCK_SH : LOCK_EX) | LOCK_NB) == 0)
        return;
    const bool taken = errno == EWOULDBLOCK;
    ::close(descriptor);
    if (!taken)
        fail(u"Could not lock"_s, databaseFile);
    throw StorageError((databaseFile
                        + (kind == Kind::Shared ? u" is being replaced at the moment"_s
                                                : u" is in use by another process"_s))
                           .toStdString());
}

DatabaseLock::~DatabaseLock()
{
    ::close(descriptor);
}

} // namespace tideloft::service
