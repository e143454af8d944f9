// A library for LD_PRELOAD: the system's calls for files, some of which fail as a test has planned. The first
// call that failed is kept by its name and that of its file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/faults/failing_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace tideloft::tests;

namespace
{

struct State {
    std::string directory;
    FaultPlan plan{};
    int calls = 0;
    std::string failed;
    std::array<std::string, 1024> names; ///< of the open files below the directory, by descriptor
};

State &state()
{
    static State *const only = [] {
        auto *made = new State; // never freed: calls come until the process is gone
        if (const char *killAt = getenv(killAtVariable)) {
            char *rest = nullptr;
            const auto first = static_cast<int>(strtol(killAt, &rest, 10));
            made->plan = {nullptr, Call::Any, first, first, killed};
            made->directory = rest + (*rest == ' ');
        }
        return made;
    }();
    return *only;
}

bool concerns(const std::string &path)
{
    const std::string &directory = state().directory;
    return !directory.empty() && path.compare(0, directory.size(), directory) == 0;
}

std::string lastPart(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

// The errno with which this call has to fail, or 0.
int faultOf(Call call, const std::string &what)
{
    State &now = state();
    if (now.plan.call != Call::Any && now.plan.call != call)
        return 0;
    ++now.calls;
    if (now.calls < now.plan.first || now.calls > now.plan.last)
        return 0;
    if (now.plan.error == killed)
        syscall(SYS_kill, getpid(), SIGKILL);
    if (now.failed.empty())
        now.failed = what;
    return now.plan.error;
}

std::string *nameOf(int file)
{
    auto &names = state().names;
    const auto place = static_cast<size_t>(file);
    return place < names.size() && !names[place].empty() ? &names[place] : nullptr;
}

int fail(int error)
{
    errno = error;
    return -1;
}

int openIn(int directory, const char *path, int flags, mode_t mode)
{
    const bool watched = concerns(path);
    const std::string purpose = (flags & O_DIRECTORY) != 0 ? "open directory "
                                : (flags & O_WRONLY) != 0  ? "open to write "
                                                           : "open to read ";
    if (const int error = watched ? faultOf(Call::Open, purpose + lastPart(path)) : 0)
        return fail(error);
    const auto file = static_cast<int>(syscall(SYS_openat, directory, path, flags, mode));
    if (watched && file >= 0 && static_cast<size_t>(file) < state().names.size())
        state().names[static_cast<size_t>(file)] = lastPart(path);
    return file;
}

mode_t modeIn(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

size_t allowed(size_t size, int error)
{
    return error == shortCount ? (size + 1) / 2 : size;
}

} // namespace

extern "C" {

void tideloftPlanFault(const FaultPlan *plan)
{
    State &now = state();
    now.plan = *plan;
    now.directory = plan->directory;
    now.calls = 0;
    now.failed.clear();
}

const char *tideloftFailedCall()
{
    return state().failed.c_str();
}

int tideloftPlannedCalls()
{
    return state().calls;
}

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return openIn(AT_FDCWD, path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return openIn(AT_FDCWD, path, flags, mode);
}

ssize_t read(int file, void *bytes, size_t size)
{
    const std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Read, "read " + *name) : 0;
    return error > 0 ? fail(error) : syscall(SYS_read, file, bytes, allowed(size, error));
}

ssize_t write(int file, const void *bytes, size_t size)
{
    const std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Write, "write " + *name) : 0;
    return error > 0 ? fail(error) : syscall(SYS_write, file, bytes, allowed(size, error));
}

// As in the system, a file is closed even when closing it reports an error.
int close(int file)
{
    std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Close, "close " + *name) : 0;
    if (name)
        name->clear();
    const auto result = static_cast<int>(syscall(SYS_close, file));
    return error > 0 ? fail(error) : result;
}

int mkdir(const char *path, mode_t mode) noexcept
{
    const int error = concerns(path) ? faultOf(Call::Mkdir, "mkdir " + lastPart(path)) : 0;
    return error > 0 ? fail(error) : static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

int flock(int file, int operation) noexcept
{
    const std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Flock, "lock " + *name) : 0;
    return error > 0 ? fail(error) : static_cast<int>(syscall(SYS_flock, file, operation));
}

int stat(const char *path, struct stat *status) noexcept
{
    const int error = concerns(path) ? faultOf(Call::Stat, "look at " + lastPart(path)) : 0;
    return error > 0 ? fail(error) : static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, status, 0));
}

int fstat(int file, struct stat *status) noexcept
{
    const std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Fstat, "examine " + *name) : 0;
    return error > 0 ? fail(error) : static_cast<int>(syscall(SYS_fstat, file, status));
}

int fchmod(int file, mode_t mode) noexcept
{
    const std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Fchmod, "permit " + *name) : 0;
    return error > 0 ? fail(error) : static_cast<int>(syscall(SYS_fchmod, file, mode));
}

int ftruncate(int file, off_t size) noexcept
{
    const std::string *name = nameOf(file);
    const int error = name ? faultOf(Call::Ftruncate, "empty " + *name) : 0;
    return error > 0 ? fail(error) : static_cast<int>(syscall(SYS_ftruncate, file, size));
}

} // extern "C"
