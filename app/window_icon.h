// The picture that stands for the program in title bars, task lists and window switchers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace tideloft::app
{

/// The desktop's own icon for the program where it has one, so that a theme may redraw it; otherwise the one
/// that the program carries, which is there too when nothing was installed. Needs the application object.
QIcon windowIcon();

} // namespace tideloft::app
