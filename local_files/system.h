// All that this room asks of the system. Whoever brings the client to another system provides these functions
// there, with the same promises. No other file of the room knows which system it runs on.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDevice>
#include <QString>

#include <optional>

namespace tideloft::local_files::system
{

/// What is opened, and for what. No opening waits for the other end of a pipe, and what is opened is never
/// handed to a program that this one starts.
enum class Opening {
    Directory, ///< to look at and to lock; a link is followed, and nothing but a directory is opened
    Itself,    ///< to look at; a link is refused
    Reading,   ///< a link is followed
    Writing,   ///< a link is refused; a new file is for its owner alone, an old one keeps its bytes
};

/// What the system says of a place.
struct Status {
    enum class Kind { RegularFile, Directory, Other };

    Kind kind;
    bool isOwn;      ///< belongs to the user whose program this is
    bool hasOneName; ///< no second name leads to the same file
    QFileDevice::Permissions permissions;
    qint64 size;
};

enum class Locking { Done, NotNow, Impossible };

/// A number of at least 0 for what was opened, and below 0 if that failed.
[[nodiscard]] int open(const QString &path, Opening opening);
void close(int descriptor);

/// Of what was opened, whatever its path names by now.
[[nodiscard]] std::optional<Status> statusOf(int descriptor);
/// Of what is at PATH; links are followed.
[[nodiscard]] std::optional<Status> statusAt(const QString &path);
/// Whether the system is certain that PATH leads to nothing that it would open: no such name, a folder on the
/// way that is none or may not be entered, links in a circle, a name that is too long.
[[nodiscard]] bool nothingIsAt(const QString &path);

/// Gives what was opened these permissions, if the system allows that: of the owner, of the group, of others.
void setPermissions(int descriptor, QFileDevice::Permissions permissions);

/// The number of bytes, which may be fewer than asked for: 0 at the end, below 0 on an error.
[[nodiscard]] qsizetype read(int descriptor, char *bytes, qsizetype size);
[[nodiscard]] qsizetype write(int descriptor, const char *bytes, qsizetype size);
/// Takes all bytes out of a file. False if the system refuses.
[[nodiscard]] bool empty(int descriptor);

/// Tries to lock a directory for this opening of it alone. The lock keeps away nobody who does not ask for
/// one, and ends with the descriptor or with the program, however that ends.
[[nodiscard]] Locking tryLock(int descriptor);

/// Overwrites memory, also where the compiler sees that nobody reads it again.
void wipe(void *memory, qsizetype size);
/// How many bytes may be overwritten at MEMORY, which std::malloc gave: at least as many as were asked for.
[[nodiscard]] size_t sizeOfBlock(void *memory);

} // namespace tideloft::local_files::system
