// Single numbers that are kept by name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

void setFact(Database &database, const QString &name, qint64 value);

} // namespace tideloft::service
