// A user, as everything that is kept is somebody's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

struct User {
    qint64 id = 0;
    QString name;
};

} // namespace tideloft::service
