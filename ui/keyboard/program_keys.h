// The program's keyboard shortcuts: they end it, close its window, start it anew, or find the search.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QKeyEvent;
class QWidget;

namespace tideloft::ui
{

/// Ctrl+Q quits, and Ctrl+W closes WINDOW.
void addProgramKeys(QWidget *window);

/// Ctrl+F calls FIND while PAGE is on screen.
void addSearchKey(QWidget *page, const std::function<void()> &find);

/// Whether PRESS is Ctrl+R. A key that is held down counts once: it repeats itself before the program has
/// quit, and would start a copy each time.
bool isRestartKey(const QKeyEvent &press);

/// Quits, and starts the program anew with the arguments that it has.
void restartProgram();

} // namespace tideloft::ui
