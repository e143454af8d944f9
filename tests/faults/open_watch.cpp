// Stands before the C library in a test program: each call is noted and then made.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/faults/open_watch.h"

#include <arpa/inet.h>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <utility>

namespace
{

struct Notes {
    std::mutex mutex;
    std::vector<std::string> lines;
};

Notes &notes()
{
    static auto *const all = new Notes; // outlives every thread that may still open something
    return *all;
}

void note(const char *path)
{
    const std::lock_guard lock(notes().mutex);
    notes().lines.emplace_back(path ? path : "");
}

template <typename Function> Function real(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

mode_t modeFrom(int flags, va_list arguments)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

using Open = int (*)(const char *, int, ...);
using OpenAt = int (*)(int, const char *, int, ...);
using OpenStream = FILE *(*)(const char *, const char *);

} // namespace

namespace tideloft::tests
{

std::vector<std::string> takeTouched()
{
    const std::lock_guard lock(notes().mutex);
    return std::exchange(notes().lines, {});
}

} // namespace tideloft::tests

extern "C" {

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeFrom(flags, arguments);
    va_end(arguments);
    note(path);
    return real<Open>("open")(path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeFrom(flags, arguments);
    va_end(arguments);
    note(path);
    return real<Open>("open64")(path, flags, mode);
}

int openat(int directory, const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeFrom(flags, arguments);
    va_end(arguments);
    note(path);
    return real<OpenAt>("openat")(directory, path, flags, mode);
}

int openat64(int directory, const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeFrom(flags, arguments);
    va_end(arguments);
    note(path);
    return real<OpenAt>("openat64")(directory, path, flags, mode);
}

FILE *fopen(const char *path, const char *mode)
{
    note(path);
    return real<OpenStream>("fopen")(path, mode);
}

FILE *fopen64(const char *path, const char *mode)
{
    note(path);
    return real<OpenStream>("fopen64")(path, mode);
}

int connect(int descriptor, const sockaddr *address, socklen_t length)
{
    std::string where = "connect elsewhere";
    if (address->sa_family == AF_INET) {
        const auto *internet = reinterpret_cast<const sockaddr_in *>(address);
        char host[INET_ADDRSTRLEN] = {};
        inet_ntop(AF_INET, &internet->sin_addr, host, sizeof host);
        where = "connect " + std::string(host) + ":" + std::to_string(ntohs(internet->sin_port));
    }
    note(where.c_str());
    return real<int (*)(int, const sockaddr *, socklen_t)>("connect")(descriptor, address, length);
}

int getaddrinfo(const char *host, const char *service, const addrinfo *hints, addrinfo **found)
{
    note(("resolve " + std::string(host ? host : "")).c_str());
    return real<int (*)(const char *, const char *, const addrinfo *, addrinfo **)>("getaddrinfo")(
        host, service, hints, found);
}
}
