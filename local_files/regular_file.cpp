// Opening, looking at what was opened, reading or writing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/regular_file.h"

#include "local_files/descriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <tuple>
#include <utility>

namespace tideloft::local_files
{

namespace
{

// What was opened is looked at, not what the path named a moment before. Without O_NONBLOCK the opening of a
// pipe would wait for its other end; regular files do not care.
constexpr int withoutWaiting = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

// Nothing unless it is a regular file.
std::optional<struct stat> statusOf(const Descriptor &file)
{
    struct stat status {
    };
    if (!file.isOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return status;
}

// A call of the system, again when a signal came first.
template <typename Call> auto uninterrupted(const Call &call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// What was read of a file, which may be a key: it is wiped unless it is given out.
struct Buffer {
    explicit Buffer(qsizetype size) : content(size, Qt::Uninitialized) {}
    Q_DISABLE_COPY_MOVE(Buffer)
    ~Buffer()
    {
        if (!content.isEmpty())
            explicit_bzero(content.data(), static_cast<size_t>(content.size()));
    }
    QByteArray release(qsizetype size)
    {
        content.truncate(size);
        return std::exchange(content, {});
    }
    QByteArray content;
};

// Fills BYTES from position SIZE on. False on an error; SIZE is then what it was.
bool readUntilFullOrEnd(const Descriptor &file, QByteArray &bytes, qsizetype &size)
{
    while (size < bytes.size()) {
        const auto room = static_cast<size_t>(bytes.size() - size);
        const ssize_t got = uninterrupted([&] { return read(file.get(), bytes.data() + size, room); });
        if (got < 0)
            return false;
        if (got == 0)
            break;
        size += got;
    }
    return true;
}

// Up to and with the read that finds the end, so that a file which grows meanwhile is not cut. One byte more
// than is expected, and then than is allowed, tells whether there is more.
std::optional<QByteArray> readAll(const Descriptor &file, qsizetype expected)
{
    Buffer bytes(expected + 1);
    qsizetype size = 0;
    if (!readUntilFullOrEnd(file, bytes.content, size))
        return {};
    if (size <= expected)
        return bytes.release(size);
    Buffer more(largestFile + 1);
    std::memcpy(more.content.data(), bytes.content.constData(), static_cast<size_t>(size));
    if (!readUntilFullOrEnd(file, more.content, size) || size > largestFile)
        return {};
    return more.release(size);
}

bool writeAll(const Descriptor &file, const QByteArray &bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const auto left = static_cast<size_t>(bytes.size() - written);
        const ssize_t taken =
            uninterrupted([&] { return write(file.get(), bytes.constData() + written, left); });
        if (taken <= 0)
            return false;
        written += taken;
    }
    return true;
}

} // namespace

bool somethingIsAt(const QString &path)
{
    struct stat status {
    };
    if (stat(QFile::encodeName(path).constData(), &status) == 0)
        return true;
    return errno != ENOENT && errno != ENOTDIR && errno != ELOOP && errno != EACCES && errno != ENAMETOOLONG;
}

bool isFilled(const QString &path)
{
    struct stat status {
    };
    return stat(QFile::encodeName(path).constData(), &status) == 0 && status.st_size > 0;
}

std::optional<QByteArray> readRegularFile(const QString &path)
{
    const Descriptor file(open(QFile::encodeName(path).constData(), O_RDONLY | withoutWaiting));
    const auto status = statusOf(file);
    return status && status->st_size <= largestFile ? readAll(file, status->st_size) : std::nullopt;
}

// What a file holds goes only once it is certain which file that is: a name that leads elsewhere, or a second
// name, may have been put there so that this program overwrites what it never made.
bool writeRegularFile(const QString &path, const QByteArray &bytes)
{
    const Descriptor file(open(QFile::encodeName(path).constData(),
                               O_WRONLY | O_CREAT | O_NOFOLLOW | withoutWaiting, ownerOnly));
    const auto status = statusOf(file);
    if (!status || status->st_nlink != 1 || uninterrupted([&] { return ftruncate(file.get(), 0); }) != 0)
        return false;
    fchmod(file.get(), ownerOnly); // of a file that was there before; it is empty at this moment
    if (!writeAll(file, bytes))
        std::ignore = ftruncate(file.get(), 0);
    return true;
}

} // namespace tideloft::local_files
