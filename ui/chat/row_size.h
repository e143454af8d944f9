// How large the row of a history is, found out without a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_rows.h"

#include <QFont>
#include <QSize>

class QWidget;

namespace tideloft::ui
{

/// What rows take from the list that they stand in.
struct RowFonts {
    QFont name;
    QFont text;
    QFont time;
    QFont day;
    int daySpacing = 0; ///< px between a day's label and the lines beside it
};

/// The fonts of rows below VIEWPORT.
RowFonts rowFonts(QWidget *viewport);

/// The size hint of the widget for ROW in a list that is LISTWIDTH px wide, to the pixel.
QSize rowSize(const HistoryRow &row, int listWidth, const RowFonts &fonts);

} // namespace tideloft::ui
