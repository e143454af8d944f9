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

constexpr QFileDevice::Permissions ownerOnly =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

[[noreturn]] void fail(const QString &what)
{
    throw StorageError((what + u": "_s + QString::fromLocal8Bit(std::strerror(errno))).toStdString());
}

/// A file that is closed with it. What is done through it concerns this file, whatever stands under the name
/// by then: the folder may belong to somebody with fewer rights, who can put a link there at any moment.
class OpenFile
{
public:
    OpenFile(const QString &path, int flags)
        : descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {
    }
    Q_DISABLE_COPY_MOVE(OpenFile)
    ~OpenFile()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }

    bool keepForOwner() const { return descriptor >= 0 && ::fchmod(descriptor, S_IRUSR | S_IWUSR) == 0; }
    bool sync() const { return descriptor >= 0 && ::fsync(descriptor) == 0; }

    /// Gives away what this process has made, and nothing that has a second name.
    bool giveTo(const struct stat &owner) const
    {
        struct stat own {
        };
        return descriptor >= 0 && ::fstat(descriptor, &own) == 0 && S_ISREG(own.st_mode) && own.st_nlink == 1
               && own.st_uid == ::geteuid() && ::fchown(descriptor, owner.st_uid, owner.st_gid) == 0;
    }

private:
    const int descriptor;
};

void syncPath(const QString &path)
{
    if (!OpenFile(path, O_RDONLY).sync())
        fail(u"Could not write %1 to the disk"_s.arg(path));
}

} // namespace

void makeFolderOf(const QString &file)
{
    const QString folder = QFileInfo(file).absolutePath();
    if (QDir(folder).exists())
        return;
    if (!QDir().mkpath(folder))
        throw StorageError((u"Could not create the folder of the database: "_s + folder).toStdString());
    QFile::setPermissions(folder, ownerOnly);
}

void makeOwnFile(const QString &file)
{
    if (!OpenFile(file, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK).keepForOwner())
        fail(errno == ELOOP ? u"The database %1 is a symbolic link"_s.arg(file)
                            : u"Could not open the database %1"_s.arg(file));
}

void giveToOwnerOf(const QString &file, const QString &other)
{
    struct stat owner {
    };
    [[maybe_unused]] const bool given = // which only root may, and only root has to
        ::stat(QFile::encodeName(other).constData(), &owner) == 0
        && OpenFile(file, O_RDONLY | O_NOFOLLOW | O_NONBLOCK).giveTo(owner);
}

bool mayWrite(const QString &path)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
}

bool linkFile(const QString &file, const QString &secondName)
{
    return ::link(QFile::encodeName(file).constData(), QFile::encodeName(secondName).constData()) == 0;
}

void syncFile(const QString &file)
{
    syncPath(file);
    syncPath(QFileInfo(file).absolutePath());
}

} // namespace tideloft::service
