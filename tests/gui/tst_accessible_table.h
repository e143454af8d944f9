// What a screen reader must be told of every control.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QAccessible>
#include <QList>

namespace tideloft::tests
{

/// A control: the page that it stands on, what it is, what it is called, and what is told of it besides.
struct Control {
    QByteArray page;
    QAccessible::Role role = QAccessible::NoRole;
    ui::LocalizedText name;
    ui::LocalizedText description = {};
};

/// Every control of every page, dialog and menu, but the settings' switches, which have a table of their own.
const QList<Control> &controls();

} // namespace tideloft::tests
