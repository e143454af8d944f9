// Whether a start would work, found out without opening a port or changing a file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/option_table.h"

#include <QStringList>

namespace tideloft::service
{

struct StartCheck {
    QStringList problems; ///< each would end the start
    QStringList warnings;
};

/// DATABASE is what a start would open: a file, or the address of a server.
StartCheck checkStart(const Options &options, const QString &database);

} // namespace tideloft::service
