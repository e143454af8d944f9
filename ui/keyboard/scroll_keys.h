// Lets a list that takes no focus be scrolled from the keyboard.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QAbstractScrollArea;
class QWidget;

namespace tideloft::ui
{

/// Page Up and Page Down, pressed in FIELD, scroll AREA by a page. FIELD must not use them itself.
void scrollByKeys(QWidget *field, QAbstractScrollArea *area);

} // namespace tideloft::ui
