// What tideloftctl is asked to do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/control/command_table.h"

namespace tideloft::service
{

/// A command and what it is given, or no command, a text to print and the code to end with.
struct ParsedCall {
    const ControlCommand *command = nullptr;
    Call call;
    QString text;
    int exitCode = 0;
};

/// ARGUMENTS begin with the program's name. A mistake gives exit code 2 and a text that names it.
ParsedCall parseCall(const QStringList &arguments);

} // namespace tideloft::service
