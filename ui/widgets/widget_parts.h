// The small parts that pages and rows are put together from.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QFrame;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QHBoxLayout;
class QWidget;

namespace tideloft::ui
{

/// A label that shows TEXT as it stands, never as markup. Plain labels of pages and rows are made here.
QLabel *makeLabel(const QString &text, QWidget *parent, const QString &objectName = {});

/// The same with a style of its own that no sheet changes.
QLabel *makeStyledLabel(const QString &text, const QString &style, QWidget *parent);

/// A plain container that paints the background and border that the style sheet gives OBJECTNAME.
QWidget *makeBox(QWidget *parent, const QString &objectName = {});

/// A horizontal line.
QFrame *makeRule(QWidget *parent, const QString &objectName = {});

/// A push button with a pointing hand.
QPushButton *makeButton(const QString &text, QWidget *parent, const QString &objectName = {});

/// Layouts of OWNER, from top to bottom and from left to right, without margins and with SPACING px between
/// their items.
QVBoxLayout *makeColumnLayout(QWidget *owner, int spacing = 0);
QHBoxLayout *makeRowLayout(QWidget *owner, int spacing = 0);

} // namespace tideloft::ui
