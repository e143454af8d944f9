// What tests of the servers in the rail share.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gui_probe.h"
#include "tests/support/listed_server.h"
#include "tests/support/popups.h"

#include <QAbstractButton>
#include <QJsonArray>

class QLayout;
class QScrollArea;

namespace tideloft::tests
{

/// The part of the rail that scrolls the servers' buttons.
QScrollArea *serverPlace(const GuiProbe &probe);
/// The layout that holds the servers' buttons.
QLayout *serverColumn(const GuiProbe &probe);
QList<QAbstractButton *> serverButtons(const GuiProbe &probe);
QList<bool> serverChecks(const GuiProbe &probe); ///< which of the buttons are checked
/// Makes SERVERS the service's list and the rail's.
bool listServers(GuiProbe &probe, const QJsonArray &servers);
/// Opens the context menu of the button at INDEX by a right click at (5, 5); see withMenu().
bool withServerMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use, int index = 0);

} // namespace tideloft::tests
