// Keeps the servers of the rail within the window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QScrollArea;
class QWidget;

namespace tideloft::ui
{

/// Puts COLUMN into a place of PARENT that is as high as the column while there is room, and that the wheel
/// and the Tab key scroll when there is less: many servers push neither a button nor the window's edge away.
QScrollArea *makeServerScroll(QWidget *column, QWidget *parent);

/// Scrolls BUTTON of the column into view, once it has been laid out.
void scrollServerIntoView(QWidget *button);

} // namespace tideloft::ui
