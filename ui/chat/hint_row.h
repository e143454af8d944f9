// One line of the empty state: an icon and a short text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace tideloft::ui
{

/// A row "hintRow" with the labels "hintIcon" and "hintText", both plain text.
QWidget *makeHintRow(const QString &icon, const QString &text, QWidget *parent = nullptr);

} // namespace tideloft::ui
