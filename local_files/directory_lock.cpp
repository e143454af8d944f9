// Locking of a directory.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/directory_lock.h"

#include <QDeadlineTimer>
#include <QThread>

namespace tideloft::local_files
{

namespace
{

constexpr int pause = 5; // ms

bool lock(const Descriptor &directory, int patience)
{
    const QDeadlineTimer deadline(patience);
    while (directory.isOpen()) {
        const system::Locking outcome = system::tryLock(directory.get());
        if (outcome != system::Locking::NotNow || deadline.hasExpired())
            return outcome == system::Locking::Done;
        QThread::msleep(pause);
    }
    return false;
}

} // namespace

DirectoryLock::DirectoryLock(const QString &path, int patience)
    : directory(system::open(path, system::Opening::Directory)),
      held(lock(directory, patience))
{
}

} // namespace tideloft::local_files
