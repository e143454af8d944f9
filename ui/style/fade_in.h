// The soft appearance of a page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace tideloft::ui
{

/// Lets WIDGET appear within 180 ms, from transparent to opaque. An effect it already has is replaced. When
/// the fade is over, its effect stays on the widget, opaque and disabled. Fades may run inside each other.
void fadeIn(QWidget *widget);

} // namespace tideloft::ui
