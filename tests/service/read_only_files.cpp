// Stands before the C library: while the file named in TIDELOFT_READ_ONLY exists, writing to databases and
// their journals fails as on a file system that was made read-only, also for who has opened them before.
// Nobody's rights matter to that, so the test is the same for root.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/descriptor_path.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <sys/syscall.h>
#include <unistd.h>

namespace
{

bool isRefused(int descriptor)
{
    const char *mark = std::getenv("TIDELOFT_READ_ONLY");
    char path[4096];
    if (!mark || access(mark, F_OK) != 0 || !tideloft::tests::readPathOf(descriptor, path))
        return false;
    errno = EROFS;
    return std::strstr(path, ".sqlite") != nullptr && std::strstr(path, "-shm") == nullptr;
}

} // namespace

extern "C" ssize_t pwrite64(int descriptor, const void *data, size_t size, off64_t offset)
{
    return isRefused(descriptor) ? -1 : syscall(SYS_pwrite64, descriptor, data, size, offset);
}

extern "C" ssize_t pwrite(int descriptor, const void *data, size_t size, off_t offset)
{
    return pwrite64(descriptor, data, size, offset);
}

extern "C" int ftruncate64(int descriptor, off64_t size) noexcept
{
    return isRefused(descriptor) ? -1 : static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
}

extern "C" int ftruncate(int descriptor, off_t size) noexcept
{
    return ftruncate64(descriptor, size);
}
