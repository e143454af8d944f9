// Everything that a list of rows shows, as text: two lists look alike if their texts are equal.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QListWidget;

namespace tideloft::tests
{

/// Lets everything happen that is due, deletions too.
void settleWidgets();

/// One line for each entry and each widget in its row: data, flags and size hint of the one, place, look and
/// words of the other; then the current entry, the scroll bar, and how many widgets stand in the viewport.
QStringList listState(const QListWidget *list);

} // namespace tideloft::tests
