// What tests of names and roles share: the window as a screen reader is told of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_rail_probe.h"
#include "tests/gui/tst_settings_probe.h"

#include <QAccessible>

namespace tideloft::tests
{

/// The interface of WIDGET; the test program ends where there is none.
QAccessibleInterface *spokenOf(const QWidget *widget);
QString spokenName(const QWidget *widget);        ///< as it is spoken
QString spokenDescription(const QWidget *widget); ///< as it is spoken

/// "Role: name (description)", without the brackets where nothing is told besides.
QString told(QAccessible::Role role, const QString &name, const QString &description);

/// What on screen below ROOT, or ROOT itself, takes the keyboard or is a button, a field or a list, but for
/// what stands below one of EXCEPT. Likewise the entries of a menu.
QStringList controlsBelow(const QWidget *root, const QList<const QWidget *> &except = {});

/// The names of the entries of LIST.
QStringList spokenEntries(const QWidget *list);

} // namespace tideloft::tests
