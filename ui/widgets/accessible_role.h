// What a widget is to a screen reader where the toolkit's own answer says too little.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QComboBox;
class QLabel;

namespace tideloft::ui
{

/// Before the first widget below is looked at: tells the toolkit of the interfaces made here. Among them is
/// that of ElidedLabel, which says no more of a text than is drawn of it.
void installAccessibleInterfaces();

/// Has WIDGET presented as ROLE; to be called before anything is told of it. Plain widgets and scroll areas
/// the toolkit presents as mere filling. As a ButtonMenu a widget offers to be pressed, which does what Space
/// does. Of a combo box the toolkit says only which entry is chosen, "English", and not what for; here it is
/// "Language: English".
void setAccessibleRole(QWidget *widget, QAccessible::Role role);

/// Makes LABEL a place for news. A screen reader says at once what comes up in a notification, while the
/// keyboard stays where it is.
void makeNotification(QLabel *label);

/// Shows TEXT in LABEL, which is a notification, as news.
void notify(QLabel *label, const QString &text);

/// Calls COMBO and its list NAME.
void nameCombo(QComboBox *combo, const QString &name);

} // namespace tideloft::ui
