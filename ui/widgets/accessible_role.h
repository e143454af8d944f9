// What a widget is to a screen reader where the toolkit's own answer says too little.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QComboBox;
class QLabel;

namespace tideloft::ui
{

/// Registers the interfaces below with the toolkit; call before a screen reader asks for the first widget.
/// Also registers the interface of ElidedLabel, which says only the part of the text that is drawn.
void installAccessibleInterfaces();

/// Has WIDGET presented as ROLE; call before a screen reader asks for WIDGET. The toolkit presents plain
/// widgets and scroll areas as mere filling. A ButtonMenu offers an action "press", which does what the Space
/// key does. For a combo box the toolkit names only the chosen entry, "English"; here the name is "Language:
/// English".
void setAccessibleRole(QWidget *widget, QAccessible::Role role);

/// Makes LABEL a place for news. A screen reader says at once what comes up in a notification, while the
/// keyboard stays where it is.
void makeNotification(QLabel *label);

/// Shows TEXT in LABEL, which is a notification, as news.
void notify(QLabel *label, const QString &text);

/// Calls COMBO and its list NAME.
void nameCombo(QComboBox *combo, const QString &name);

} // namespace tideloft::ui
