// What the process opens and whom it connects to, the toolkit included.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace tideloft::tests
{

/// The paths opened and the hosts asked for ("connect 127.0.0.1:80", "resolve example.org") since the last
/// call, from any thread and by any library of a program that links this one.
std::vector<std::string> takeTouched();

} // namespace tideloft::tests
