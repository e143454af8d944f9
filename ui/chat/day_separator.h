// What stands between two days of a history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_row_models.h"

class QWidget;

namespace tideloft::ui
{

/// A row with the day's label between two rules.
QWidget *makeDaySeparator(const DaySeparatorModel &model, QWidget *parent);

} // namespace tideloft::ui
