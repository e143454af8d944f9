// What a command of tideloftctl is given.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace tideloft::service
{

struct Call {
    QStringList arguments; ///< as many as the command takes
    QString database;
    bool confirmed = false; ///< what cannot be undone is meant
};

} // namespace tideloft::service
