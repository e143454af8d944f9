// Calls of POSIX and of Linux.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/system/process.h"

#include <malloc.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

namespace tideloft::service
{

void keepFilesForOwner()
{
    umask(S_IRWXG | S_IRWXO);
}

void allowManyFiles()
{
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) != 0)
        return;
    files.rlim_cur = files.rlim_max;
    static_cast<void>(setrlimit(RLIMIT_NOFILE, &files));
}

void keepNoLargeMemory()
{
    constexpr int large = 1024 * 1024;
    static_cast<void>(mallopt(M_MMAP_THRESHOLD, large));
}

void outliveFailedWrites()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void keepLittleUnsent(int socket, int bytes)
{
    static_cast<void>(setsockopt(socket, IPPROTO_TCP, TCP_NOTSENT_LOWAT, &bytes, sizeof bytes));
}

void outliveEarlyRenewals()
{
    std::signal(SIGHUP, SIG_IGN);
}

// On Linux this number belongs to the thread. Against a busy thread of usual priority 10 leaves a tenth of a
// processor, where 19, the last, leaves a hundredth: beside a busy program nobody could sign in.
void letOthersGoFirst()
{
    constexpr int later = 10;
    const auto thread = static_cast<id_t>(gettid());
    static_cast<void>(setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + later));
}

bool writeWithoutWaiting(int descriptor, const char *bytes, std::size_t size)
{
    pollfd output{descriptor, POLLOUT, 0};
    if (poll(&output, 1, 0) != 1 || (output.revents & POLLOUT) == 0)
        return false;
    return ::write(descriptor, bytes, size) == static_cast<ssize_t>(size);
}

bool isInputTyped()
{
    return isatty(STDIN_FILENO) == 1;
}

struct SilentTerminal::Settings {
    termios terminal{};
};

SilentTerminal::SilentTerminal()
{
    auto found = std::make_unique<Settings>();
    tcgetattr(STDIN_FILENO, &found->terminal);
    termios silent = found->terminal;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    before = std::move(found);
}

SilentTerminal::~SilentTerminal()
{
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &before->terminal);
}

} // namespace tideloft::service
