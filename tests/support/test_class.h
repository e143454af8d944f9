// The classes of tests in a program. Each enters a list, and main() runs the one that is asked for by name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::tests
{

/// What runs the tests of one class: a main() of its own.
using RunTests = int (*)(int argc, char **argv);

/// Enters a class under the name of its source FILE, without folder and ending. Returns true.
bool addTestClass(const char *file, RunTests run);

} // namespace tideloft::tests
