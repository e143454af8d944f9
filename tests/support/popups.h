// What tests of menus and dialogs share: waiting for what a click brings up, and looking at it while it runs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <functional>

class QDialog;
class QMenu;
class QPoint;
class QWidget;

namespace tideloft::tests
{

/// Runs OPEN, which must bring up a menu that runs modally; lets USE look at it and act, and closes it if it
/// still stands. False: no menu came up.
bool withMenu(const std::function<void()> &open, const std::function<void(QMenu *)> &use);
/// The same for a modal dialog, which has the keyboard when USE begins.
bool withDialog(const std::function<void()> &open, const std::function<void(QDialog &)> &use);

/// What OPEN brings up: "menu", the title of a dialog, or "nothing". It is closed again.
QString broughtUp(const std::function<void()> &open);

/// The texts of a menu's entries in their order, "-" for a separator.
QStringList entriesOf(const QMenu *menu);
/// A click on the entry with that INDEX, separators counted.
void clickEntry(QMenu *menu, int index);
/// Has that entry act as an assistive program does; no key and no click tells the menu of it.
void pressAsAssistant(QMenu *menu, int index);

/// Presses BUTTON at SPOT of WIDGET, as the screen would tell the window, which finds out who gets it.
void press(const QWidget *widget, QPoint spot, Qt::MouseButton button = Qt::LeftButton);
/// Presses and lets go.
void clickAt(const QWidget *widget, QPoint spot, Qt::MouseButton button = Qt::LeftButton);
/// The same in the middle of TARGET.
void clickOnScreen(const QWidget &target);
/// Types TEXT into whatever has the keyboard.
void typeText(const QString &text);

} // namespace tideloft::tests
