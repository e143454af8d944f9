// Preloaded into the client: allows core files of any size, and says what the client makes of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <sys/resource.h>

#include <cstdio>

extern "C" int getrlimit(__rlimit_resource_t resource, rlimit *limit) noexcept
{
    if (resource != RLIMIT_CORE)
        return prlimit(0, static_cast<__rlimit_resource>(resource), nullptr, limit);
    *limit = {RLIM_INFINITY, RLIM_INFINITY};
    return 0;
}

extern "C" int setrlimit(__rlimit_resource_t resource, const rlimit *limit) noexcept
{
    if (resource != RLIMIT_CORE)
        return prlimit(0, static_cast<__rlimit_resource>(resource), limit, nullptr);
    std::fprintf(stderr, "core files: %llu %llu\n", static_cast<unsigned long long>(limit->rlim_cur),
                 static_cast<unsigned long long>(limit->rlim_max));
    return 0;
}
