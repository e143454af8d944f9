// Looking at permissions, and taking some away.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/owner_only.h"

#include "local_files/descriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

#include <tuple>

namespace tideloft::local_files
{

namespace
{

void takeFromOthers(const QString &path, int flags, mode_t allowed)
{
    const Descriptor place(
        open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags));
    struct stat status {
    };
    if (!place.isOpen() || fstat(place.get(), &status) != 0 || status.st_uid != geteuid())
        return;
    const bool isOurs = S_ISDIR(status.st_mode) || (S_ISREG(status.st_mode) && status.st_nlink == 1);
    const mode_t permitted = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    if (isOurs && (permitted & ~allowed) != 0)
        std::ignore = fchmod(place.get(), permitted & allowed); // refused: things go on as they are
}

} // namespace

bool makeForOwner(const QString &directory)
{
    QDir().mkpath(QFileInfo(directory).path());
    return QDir().mkdir(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)
           || QFileInfo(directory).isDir();
}

void keepDirectoryForOwner(const QString &path)
{
    takeFromOthers(path, O_DIRECTORY, S_IRWXU);
}

void keepFileForOwner(const QString &path)
{
    takeFromOthers(path, O_NOFOLLOW, S_IRUSR | S_IWUSR);
}

} // namespace tideloft::local_files
