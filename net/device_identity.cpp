// Reading and making of the device identifier.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/device_identity.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUuid>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <tuple>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

constexpr qsizetype largestFile = qsizetype{64} * 1024;
constexpr int lockPatience = 2'000; // ms; whoever holds the lock for longer was stopped
constexpr int lockPause = 5;        // ms

class Descriptor
{
public:
    Descriptor(const QString &path, int flags)
        : number(open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {
    }
    Q_DISABLE_COPY_MOVE(Descriptor)
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
    [[nodiscard]] bool isOpen() const { return number >= 0; }
    /// All zero where there is nothing to look at.
    [[nodiscard]] struct stat status() const
    {
        struct stat found {
        };
        if (isOpen())
            std::ignore = fstat(number, &found);
        return found;
    }
    [[nodiscard]] bool isRegularFile() const { return S_ISREG(status().st_mode); }
    [[nodiscard]] int get() const { return number; }

private:
    const int number;
};

// Without O_NONBLOCK the opening of a pipe would wait for its other end; regular files do not care. What was
// opened is looked at then, not what the path named a moment before.
Descriptor openFile(const QString &path, int flags)
{
    return {path, flags | O_NONBLOCK | O_NOCTTY};
}

// For its owner alone from its first moment on; its parents are not this program's.
void makeDirectory(const QString &directory)
{
    QDir().mkpath(QFileInfo(directory).path());
    QDir().mkdir(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Takes from all others what an earlier version, or somebody by hand, let them do. A file with a second name
// may be no file of this program's. Where the system refuses, everything goes on.
void keepForOwner(const QString &path, int flags)
{
    const Descriptor place = openFile(path, O_RDONLY | flags);
    const struct stat status = place.status();
    const bool isOurs = S_ISDIR(status.st_mode) || (S_ISREG(status.st_mode) && status.st_nlink == 1);
    const mode_t permitted = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    const mode_t allowed = permitted & (S_ISDIR(status.st_mode) ? S_IRWXU : S_IRUSR | S_IWUSR);
    if (isOurs && status.st_uid == geteuid() && permitted != allowed)
        std::ignore = fchmod(place.get(), allowed);
}

// An advisory lock on the directory itself, so that of two copies that start for the first time at the same
// moment the second finds the identifier of the first. Where there is none to be had, the start goes on.
void lock(const Descriptor &directory)
{
    const QDeadlineTimer deadline(lockPatience);
    while (directory.isOpen() && flock(directory.get(), LOCK_EX | LOCK_NB) != 0
           && (errno == EWOULDBLOCK || errno == EINTR) && !deadline.hasExpired())
        QThread::msleep(lockPause);
}

// The bytes of a file that can be read to its end, which comes soon enough.
QByteArray readSmallFile(const Descriptor &file)
{
    QByteArray bytes(largestFile + 1, Qt::Uninitialized);
    qsizetype size = 0;
    while (size < bytes.size()) {
        const ssize_t got = read(file.get(), bytes.data() + size, static_cast<size_t>(bytes.size() - size));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return {};
        if (got == 0)
            break;
        size += got;
    }
    return size > largestFile ? QByteArray() : bytes.left(size);
}

QString readDeviceId(const QString &path)
{
    const Descriptor file = openFile(path, O_RDONLY);
    return file.isRegularFile() ? QString::fromUtf8(readSmallFile(file)).trimmed() : QString();
}

// A link, or a file with a second name, may lead to what this program never made: neither is written to. The
// next start would take a part of an identifier for one, so a disk that is full gets none of it.
void writeDeviceId(const QString &path, const QString &deviceId)
{
    const Descriptor file = openFile(path, O_WRONLY | O_CREAT | O_NOFOLLOW);
    const struct stat status = file.status();
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1 || ftruncate(file.get(), 0) != 0)
        return;
    const QByteArray bytes = deviceId.toUtf8();
    if (write(file.get(), bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
        std::ignore = ftruncate(file.get(), 0);
}

} // namespace

QString loadOrCreateDeviceId(const QString &directory)
{
    const QString path = QDir(directory).filePath(u"device_id.txt"_s);
    makeDirectory(directory);
    keepForOwner(directory, O_DIRECTORY);
    keepForOwner(path, O_NOFOLLOW);
    if (const QString known = readDeviceId(path); !known.isEmpty())
        return known; // nobody is waited for
    const Descriptor place(directory, O_RDONLY | O_DIRECTORY);
    lock(place);
    if (const QString known = readDeviceId(path); !known.isEmpty())
        return known;
    const QString fresh = QUuid::createUuid().toString(QUuid::WithoutBraces);
    writeDeviceId(path, fresh);
    return fresh;
}

} // namespace tideloft::net
