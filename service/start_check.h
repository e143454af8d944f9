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

/// DATABASE is the file that a start would open.
StartCheck checkStart(const Options &options, const QString &database);

} // namespace tideloft::service
