// How large the row of a history is, found out without a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_row_models.h"

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
    int daySpacing = 0; ///< px between a day's label and the rules beside it
};

/// The fonts of rows below VIEWPORT.
RowFonts rowFonts(QWidget *viewport);

/// How large a row is, and what was measured on the way.
struct RowSize {
    QSize row;
    QSize text;    ///< of a message: that its text has of its own, and
    QSize wrapped; ///< in its bubble
};

/// The size hint of the widget for ROW in a list that is LISTWIDTH px wide, to the pixel. Opens the message.
/// KNOWN, measured for the same row and fonts in another width, spares measuring the text again.
RowSize rowSize(const HistoryRow &row, int listWidth, const RowFonts &fonts, const RowSize &known = {});

} // namespace tideloft::ui
