// A server in the rail.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/rail/server_models.h"

#include <QList>

class QPushButton;
class QWidget;

namespace tideloft::ui
{

/// A checkable button with the server's first letter and its full name as tool tip. A right click asks for
/// its context menu.
QPushButton *makeServerButton(const ServerModel &server, bool selected, QWidget *parent);

/// The `groupId` of the server whose button in COLUMN has the keyboard; empty if none has.
QString serverWithFocus(const QWidget *column);

/// The first of BUTTONS that belongs to the server GROUPID; null if there is none.
QPushButton *serverButton(const QList<QPushButton *> &buttons, const QString &groupId);

} // namespace tideloft::ui
