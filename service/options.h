// What the service is started with: the command line, and over it the configuration file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/option_table.h"

#include <QStringList>

#include <optional>

namespace tideloft::service
{

/// What the program is to do: serve with these options, or print a text and end with this code.
struct Command {
    std::optional<Options> serve;
    QString text;
    int exitCode = 0;
    bool checkOnly = false; ///< look whether a start would work instead of serving
};

/// ARGUMENTS begin with the program's name. What they say goes before what the configuration file says that
/// they name. A mistake gives exit code 2 and a text that names it.
Command parseCommandLine(const QStringList &arguments);

/// The database that is meant.
QString databasePlace(const Options &options);

} // namespace tideloft::service
