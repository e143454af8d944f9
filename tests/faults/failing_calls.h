// What a test and the preloaded library that makes the system's calls fail agree on.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::tests
{

enum class Call { Open, Read, Write, Close, Mkdir, Flock, Stat, Fstat, Fchmod, Ftruncate, Any };

/// Instead of an errno: the call moves half of its bytes, or the process is killed in its place.
constexpr int shortCount = -1;
constexpr int killed = -2;

/// The calls of one kind that concern a place below `directory` fail, from the one with the number `first`
/// (from 1) to that with the number `last`; 0 for none.
struct FaultPlan {
    const char *directory;
    Call call;
    int first;
    int last;
    int error; ///< an errno, shortCount or killed
};

/// Names under which the library exports its functions. The environment variable makes a plan from the
/// start: "FIRST DIRECTORY" kills the process at its call with that number.
constexpr auto planFaultName = "tideloftPlanFault";       // void (const FaultPlan *), which is copied
constexpr auto failedCallName = "tideloftFailedCall";     // const char *(): "write device_id.txt", or empty
constexpr auto plannedCallsName = "tideloftPlannedCalls"; // int (): how many came, failed or not
constexpr auto killAtVariable = "TIDELOFT_TEST_KILL_AT";

} // namespace tideloft::tests
