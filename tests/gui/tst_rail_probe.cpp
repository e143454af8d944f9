// Finding the servers' buttons and filling the rail.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"

#include <QJsonDocument>
#include <QLayout>
#include <QScrollArea>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

QScrollArea *serverPlace(const GuiProbe &probe)
{
    if (auto *place = probe.the<QWidget>(u"rail"_s)->findChild<QScrollArea *>())
        return place;
    qFatal("The rail has no place for servers");
}

QLayout *serverColumn(const GuiProbe &probe)
{
    return serverPlace(probe)->widget()->layout();
}

QList<QAbstractButton *> serverButtons(const GuiProbe &probe)
{
    QList<QAbstractButton *> buttons;
    const QLayout *column = serverColumn(probe);
    for (int i = 0; i < column->count(); ++i)
        buttons.append(qobject_cast<QAbstractButton *>(column->itemAt(i)->widget()));
    return buttons;
}

QList<bool> serverChecks(const GuiProbe &probe)
{
    QList<bool> checks;
    for (const QAbstractButton *button : serverButtons(probe))
        checks.append(button->isChecked());
    return checks;
}

bool listServers(GuiProbe &probe, const QJsonArray &servers)
{
    probe.service.answer("GET /api/groups", 200, QJsonDocument(servers).toJson());
    // A list that is still under way would take this one's place; and the buttons are laid out after the
    // call.
    return probe.settle() && callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, servers))
           && probe.settle();
}

bool withServerMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use, int index)
{
    const QAbstractButton *button = serverButtons(probe).at(index);
    const QPoint spot = button->mapTo(probe.window.get(), QPoint(5, 5));
    return withMenu(
        [button] {
            press(button, {5, 5}, Qt::RightButton);
        },
        [&](QMenu *menu) {
            QTest::mouseRelease(probe.window->windowHandle(), Qt::RightButton, {}, spot);
            use(menu);
        });
}

} // namespace tideloft::tests
