// The path of an open file, for libraries that are loaded before the C library.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

#include <unistd.h>

namespace tideloft::tests
{

/// False, and PATH holds nothing, when the descriptor has no file.
inline bool readPathOf(int descriptor, char (&path)[4096])
{
    char own[64];
    std::snprintf(own, sizeof own, "/proc/self/fd/%d", descriptor);
    const ssize_t size = readlink(own, path, sizeof path - 1);
    if (size >= 0)
        path[size] = '\0';
    return size >= 0;
}

} // namespace tideloft::tests
