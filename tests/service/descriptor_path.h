// The path of an open file, for libraries that are loaded before the C library.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

#include <unistd.h>

namespace tideloft::tests
{

/// False, and TARGET holds nothing, when the descriptor has no file.
inline bool readPathOf(int descriptor, char (&target)[4096])
{
    char entry[64];
    std::snprintf(entry, sizeof entry, "/proc/self/fd/%d", descriptor);
    const ssize_t size = readlink(entry, target, sizeof target - 1);
    if (size >= 0)
        target[size] = '\0';
    return size >= 0;
}

} // namespace tideloft::tests
