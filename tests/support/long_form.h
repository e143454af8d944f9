// The short and the long form of a test that repeats something at random.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace tideloft::tests
{

/// How many rounds a test runs: `shortForm` in every run of the suite, `longForm` under `./test --long`,
/// which sets TIDELOFT_TEST_LONG. TIDELOFT_TEST_ROUNDS, a number, is for tools under which everything takes
/// longer.
inline int rounds(int shortForm, int longForm)
{
    if (const int set = qEnvironmentVariableIntValue("TIDELOFT_TEST_ROUNDS"); set > 0)
        return set;
    return qEnvironmentVariableIntValue("TIDELOFT_TEST_LONG") != 0 ? longForm : shortForm;
}

} // namespace tideloft::tests
