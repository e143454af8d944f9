// How much room a text needs at a width, found out without a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QTextOption>

class QFont;

namespace tideloft::ui
{

/// The height in px of TEXT, plain, in FONT, wrapped to WIDTH px: what a selectable label gives it.
int textHeight(const QString &text, const QFont &font, int width, QTextOption::WrapMode wrapping);

/// The size in px of TEXT, plain, in FONT, where lines of WIDTH px break between words.
QSize textSize(const QString &text, const QFont &font, int width);

} // namespace tideloft::ui
