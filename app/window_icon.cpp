// Finding the program's icon.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/window_icon.h"

#include "app/identity.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

// With the sizes named, a picture is read only when something shows it.
QIcon carriedIcon()
{
    QIcon icon;
    for (const int size : std::array{16, 24, 32, 48, 64, 128, 256})
        icon.addFile(u":/icons/%1.png"_s.arg(size), QSize(size, size));
    return icon;
}

} // namespace

QIcon windowIcon()
{
    return QIcon::fromTheme(desktopFileName, carriedIcon());
}

} // namespace tideloft::app
