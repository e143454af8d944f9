// The configuration file: lines of "key = value".
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/option_table.h"

#include <QStringList>

namespace tideloft::service
{

/// Sets what the file says. Returns every problem, with the file's name and the line; with one, the options
/// may be set in part.
QStringList readConfigFile(const QString &file, Options &options);

} // namespace tideloft::service
