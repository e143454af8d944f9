// The keys that end the program, close its window, or start it anew.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QKeyEvent;
class QWidget;

namespace tideloft::ui
{

/// Ctrl+Q quits, and Ctrl+W closes WINDOW.
void addProgramKeys(QWidget *window);

/// Whether PRESS is Ctrl+R. A key that is held down counts once: it repeats itself before the program has
/// quit, and would start a copy each time.
bool isRestartKey(const QKeyEvent &press);

/// Quits, and starts the program anew with the arguments that it has.
void restartProgram();

} // namespace tideloft::ui
