// Opening, looking at what was opened, reading or writing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/regular_file.h"

#include "local_files/descriptor.h"
#include "local_files/permissions.h"

#include <cstring>
#include <tuple>
#include <utility>

namespace tideloft::local_files
{

namespace
{

// Nothing unless it is a regular file. What was opened is looked at, not what the path named a moment before.
std::optional<system::Status> statusOf(const Descriptor &file)
{
    const auto status = file.isOpen() ? system::statusOf(file.get()) : std::nullopt;
    return status && status->kind == system::Status::Kind::RegularFile ? status : std::nullopt;
}

// What was read of a file, which may be a key: it is wiped unless it is given out.
struct Buffer {
    explicit Buffer(qsizetype size) : content(size, Qt::Uninitialized) {}
    Q_DISABLE_COPY_MOVE(Buffer)
    ~Buffer()
    {
        if (!content.isEmpty())
            system::wipe(content.data(), content.size());
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
        const qsizetype got = system::read(file.get(), bytes.data() + size, bytes.size() - size);
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
        const qsizetype taken =
            system::write(file.get(), bytes.constData() + written, bytes.size() - written);
        if (taken <= 0)
            return false;
        written += taken;
    }
    return true;
}

} // namespace

bool somethingIsAt(const QString &path)
{
    return !system::nothingIsAt(path);
}

bool isFilled(const QString &path)
{
    const auto status = system::statusAt(path);
    return status && status->size > 0;
}

std::optional<QByteArray> readRegularFile(const QString &path)
{
    const Descriptor file(system::open(path, system::Opening::Reading));
    const auto status = statusOf(file);
    return status && status->size <= largestFile ? readAll(file, status->size) : std::nullopt;
}

// What a file holds goes only once it is certain which file that is: a name that leads elsewhere, or a second
// name, may have been put there so that this program overwrites what it never made.
bool writeRegularFile(const QString &path, const QByteArray &bytes)
{
    const Descriptor file(system::open(path, system::Opening::Writing));
    const auto status = statusOf(file);
    if (!status || !status->hasOneName || !system::empty(file.get()))
        return false;
    // A file that was there before may let others in still. While it is empty, there is nothing to read.
    system::setPermissions(file.get(), ownersFile);
    if (!writeAll(file, bytes))
        std::ignore = system::empty(file.get());
    return true;
}

} // namespace tideloft::local_files
