// The window's two style sheets: every widget takes its look from one of them by its object name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QString>

namespace tideloft::ui
{

/// The text that both sheets are made from: "$role" stands for what a palette says.
QStringView styleSheetTemplate();

/// The dark sheet, with the default accent; see withAccent() for another one.
const QString &darkStyleSheet();

/// The light sheet, with the default accent: the dark one's selectors and geometry in other colours.
const QString &lightStyleSheet();

/// FONT with the families and the size that both sheets give to every widget.
QFont sheetFont(QFont font);

} // namespace tideloft::ui
