// Tool tips with text from outside.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace tideloft::ui
{

/// Shows WIDGET's tool tip as the text that it is, in no more than half the screen. The toolkit would guess,
/// and take markup for markup; the property keeps the raw text.
void showToolTipAsPlainText(QWidget *widget);

} // namespace tideloft::ui
