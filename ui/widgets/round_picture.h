// Pictures of people, as circles.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

namespace tideloft::ui
{

/// SOURCE stretched to SIZE x SIZE px, whatever its shape, and cut to a circle.
QPixmap roundPicture(const QPixmap &source, int size);

} // namespace tideloft::ui
