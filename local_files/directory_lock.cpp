// Locking of a directory.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/directory_lock.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace tideloft::local_files
{

namespace
{

constexpr int pause = 5; // ms

bool lock(const Descriptor &directory, int patience)
{
    const QDeadlineTimer deadline(patience);
    while (directory.isOpen()) {
        if (flock(directory.get(), LOCK_EX | LOCK_NB) == 0)
            return true;
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        if (deadline.hasExpired())
            return false;
        QThread::msleep(pause);
    }
    return false;
}

} // namespace

DirectoryLock::DirectoryLock(const QString &path, int patience)
    : directory(open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      held(lock(directory, patience))
{
}

} // namespace tideloft::local_files
