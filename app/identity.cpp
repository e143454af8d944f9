// The version, which the build knows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/identity.h"

namespace tideloft::app
{

QString applicationVersion()
{
    return QStringLiteral(TIDELOFT_VERSION);
}

} // namespace tideloft::app
