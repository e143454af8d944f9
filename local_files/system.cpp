// The calls of POSIX and of the GNU C library that the room makes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/system.h"

#include <QFile>

#include <fcntl.h>
#include <malloc.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <tuple>

namespace tideloft::local_files::system
{

namespace
{

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

// Without O_NONBLOCK the opening of a pipe would wait for its other end; regular files do not care.
constexpr int withoutWaiting = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

int flagsOf(Opening opening)
{
    switch (opening) {
    case Opening::Directory:
        return withoutWaiting | O_RDONLY | O_DIRECTORY;
    case Opening::Itself:
        return withoutWaiting | O_RDONLY | O_NOFOLLOW;
    case Opening::Reading:
        return withoutWaiting | O_RDONLY;
    case Opening::Writing:
        return withoutWaiting | O_WRONLY | O_CREAT | O_NOFOLLOW;
    }
    Q_UNREACHABLE();
}

// A call of the system, again when a signal came first.
template <typename Call> auto uninterrupted(const Call &call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// The toolkit has the owner's three bits, and those of the group and of others, where hexadecimal digits are.
QFileDevice::Permissions permissionsOf(mode_t mode)
{
    return QFileDevice::Permissions::fromInt(static_cast<QFileDevice::Permissions::Int>(
        (mode & S_IRWXU) >> 6 << 12 | (mode & S_IRWXG) >> 3 << 4 | (mode & S_IRWXO)));
}

mode_t modeOf(QFileDevice::Permissions permissions)
{
    const auto bits = static_cast<mode_t>(permissions.toInt());
    return (bits >> 12 << 6 & S_IRWXU) | (bits >> 4 << 3 & S_IRWXG) | (bits & S_IRWXO);
}

Status::Kind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return Status::Kind::RegularFile;
    return S_ISDIR(mode) ? Status::Kind::Directory : Status::Kind::Other;
}

Status toldBy(const struct stat &told)
{
    return {kindOf(told.st_mode), told.st_uid == geteuid(), told.st_nlink == 1, permissionsOf(told.st_mode),
            told.st_size};
}

} // namespace

int open(const QString &path, Opening opening)
{
    return ::open(QFile::encodeName(path).constData(), flagsOf(opening), ownerOnly);
}

void close(int descriptor)
{
    ::close(descriptor);
}

std::optional<Status> statusOf(int descriptor)
{
    struct stat told {
    };
    return fstat(descriptor, &told) == 0 ? std::optional(toldBy(told)) : std::nullopt;
}

std::optional<Status> statusAt(const QString &path)
{
    struct stat told {
    };
    return stat(QFile::encodeName(path).constData(), &told) == 0 ? std::optional(toldBy(told)) : std::nullopt;
}

bool nothingIsAt(const QString &path)
{
    struct stat told {
    };
    if (stat(QFile::encodeName(path).constData(), &told) == 0)
        return false;
    return errno == ENOENT || errno == ENOTDIR || errno == ELOOP || errno == EACCES || errno == ENAMETOOLONG;
}

void setPermissions(int descriptor, QFileDevice::Permissions permissions)
{
    std::ignore = fchmod(descriptor, modeOf(permissions));
}

qsizetype read(int descriptor, char *bytes, qsizetype size)
{
    return uninterrupted([&] { return ::read(descriptor, bytes, static_cast<size_t>(size)); });
}

qsizetype write(int descriptor, const char *bytes, qsizetype size)
{
    return uninterrupted([&] { return ::write(descriptor, bytes, static_cast<size_t>(size)); });
}

bool empty(int descriptor)
{
    return uninterrupted([&] { return ftruncate(descriptor, 0); }) == 0;
}

Locking tryLock(int descriptor)
{
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        return Locking::Done;
    return errno == EWOULDBLOCK || errno == EINTR ? Locking::NotNow : Locking::Impossible;
}

void wipe(void *memory, qsizetype size)
{
    explicit_bzero(memory, static_cast<size_t>(size));
}

size_t sizeOfBlock(void *memory)
{
    return malloc_usable_size(memory);
}

} // namespace tideloft::local_files::system
