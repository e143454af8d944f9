// Where a picture is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

/// The address of the picture with this name, a path on this service; empty for an empty name.
inline QString pictureUrl(const QString &name)
{
    return name.isEmpty() ? QString() : QStringLiteral("/pictures/") + name;
}

} // namespace tideloft::service
