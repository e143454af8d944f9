// All that the service asks of the system about its own process. Whoever brings the service to another system
// provides these functions there, with the same promises, and those of service/store/database_file.h and
// database_lock.h.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

namespace tideloft::service
{

/// What this process writes from now on is nobody else's to read.
void keepFilesForOwner();

/// Allows as many open files as the administrator does: a connection takes one, and the usual limit is lower.
void allowManyFiles();

/// What is as large as a picture goes back to the system as soon as it is freed. Otherwise each thread may
/// keep as much as it once had at a time.
void keepNoLargeMemory();

/// From now on a write to a pipe whose reader is gone, or to a file that may not grow, fails and ends
/// nothing.
void outliveFailedWrites();

/// Of what the other end of a TCP connection does not read, the system keeps little more than so many bytes.
/// Where it cannot be told, it may keep megabytes.
void keepLittleUnsent(int socket, int bytes);

/// The signal to read the certificate again ends nothing while nobody waits for it yet.
void outliveEarlyRenewals();

/// The calling thread leaves most of a busy processor to threads of usual priority. Where the system refuses,
/// it goes on as it is.
void letOthersGoFirst();

inline constexpr int standardError = 2; ///< descriptor of what the log is written to

/// Writes all of the bytes, if they are taken without waiting. A pipe takes them when it has room for more
/// than any line of the log has.
bool writeWithoutWaiting(int descriptor, const char *bytes, std::size_t size);

/// Whether the standard input is a terminal, at which a person types.
bool isInputTyped();

/// While it lives the terminal shows nothing of what is typed. Ctrl+C is a character then, so that nobody is
/// left with such a terminal.
class SilentTerminal
{
public:
    SilentTerminal();
    SilentTerminal(const SilentTerminal &) = delete;
    SilentTerminal &operator=(const SilentTerminal &) = delete;
    ~SilentTerminal();

private:
    struct Settings;

    std::unique_ptr<const Settings> before;
};

} // namespace tideloft::service
