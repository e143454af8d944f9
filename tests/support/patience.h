// How long a test waits for what has to come, and how to make it wait longer.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace tideloft::tests
{

/// ms that the probes and the service of the tests wait. TIDELOFT_TEST_PATIENCE, a whole number, multiplies
/// them, for a tool under which everything takes longer: making a key pair alone can take half a minute
/// there.
inline int patience()
{
    return 5000 * qMax(1, qEnvironmentVariableIntValue("TIDELOFT_TEST_PATIENCE"));
}

} // namespace tideloft::tests
