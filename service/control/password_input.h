// Passwords that are typed. None is ever read from the command line, which every user of the computer can
// see.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

/// A password of a length that the service takes: from a terminal, twice and without showing it, or the first
/// line of the standard input. Throws Problem.
QString readNewPassword();

} // namespace tideloft::service
