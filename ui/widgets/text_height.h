// How high a text stands at a width, found out without a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTextOption>

class QFont;

namespace tideloft::ui
{

/// The height in px of TEXT, plain, in FONT, wrapped to WIDTH px: what a selectable label gives it.
int textHeight(const QString &text, const QFont &font, int width, QTextOption::WrapMode wrapping);

} // namespace tideloft::ui
