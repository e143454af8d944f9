// What can wait until a window is on screen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QWidget;

namespace tideloft::ui
{

/// Calls ACTION once, after the window that WIDGET is in has drawn its first frame and in a later turn of the
/// event loop, so that the frame is sooner. ACTION is dropped if WIDGET is deleted before.
void afterFirstFrame(QWidget *widget, std::function<void()> action);

} // namespace tideloft::ui
