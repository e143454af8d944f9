// The chat history in its list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_rows.h"

class QListWidget;

namespace tideloft::ui
{

/// Makes LIST show ROWS and scrolls it to its bottom. Rows that it shows already are not touched.
void showHistory(QListWidget *list, const QList<HistoryRow> &rows);

} // namespace tideloft::ui
