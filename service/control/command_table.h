// Every command of tideloftctl.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/control/call.h"

#include <QList>

namespace tideloft::service
{

struct ControlCommand {
    QString name;       ///< one or two words
    QString parameters; ///< what its arguments are, a word each; empty when it takes none
    QString help;
    void (*run)(const Call &call); ///< throws Problem or StorageError when it cannot be done
};

/// In the order in which the help shows them.
const QList<ControlCommand> &commandTable();

} // namespace tideloft::service
