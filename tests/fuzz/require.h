// What a fuzz target does when a property does not hold: it ends the program, which is a finding.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

namespace tideloft::tests
{

/// Ends the program with the name of the PROPERTY unless it HOLDS.
inline void require(bool holds, const char *property)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", property);
    std::abort();
}

} // namespace tideloft::tests
