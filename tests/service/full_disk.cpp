// Stands before the C library of a PostgreSQL server: while the file named in TIDELOFT_FULL_DISK exists, its
// tables cannot grow, as on a disk that is full.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/descriptor_path.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

bool isTable(int descriptor)
{
    char path[4096];
    return tideloft::tests::readPathOf(descriptor, path) && std::strstr(path, "/base/") != nullptr;
}

bool isRefused(int descriptor, size_t size, off64_t offset)
{
    const char *mark = std::getenv("TIDELOFT_FULL_DISK");
    struct stat64 file = {};
    return mark && access(mark, F_OK) == 0 && isTable(descriptor) && fstat64(descriptor, &file) == 0
           && offset + static_cast<off64_t>(size) > file.st_size;
}

} // namespace

extern "C" ssize_t pwrite64(int descriptor, const void *data, size_t size, off64_t offset)
{
    if (!isRefused(descriptor, size, offset))
        return syscall(SYS_pwrite64, descriptor, data, size, offset);
    errno = ENOSPC;
    return -1;
}

extern "C" ssize_t pwrite(int descriptor, const void *data, size_t size, off_t offset)
{
    return pwrite64(descriptor, data, size, offset);
}
