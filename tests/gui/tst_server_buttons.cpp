// The servers' buttons in the rail: what fills the rail, and what does not change it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestServerButtons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void listAfterSignInFillsTheRail();
    void noPictureIsAskedFor();
    void aLoadedServerChangesNothing();
};

void TestServerButtons::listAfterSignInFillsTheRail()
{
    GuiProbe probe;
    probe.service.answer("GET /api/groups", 200,
                         R"([{"groupId":"g1","name":"one"},{"groupId":"g2","name":"two"}])");
    QVERIFY(probe.signIn());
    QTRY_COMPARE(serverButtons(probe).size(), 2);
    QCOMPARE(serverButtons(probe).at(0)->text(), u"O"_s);
    QCOMPARE(serverButtons(probe).at(1)->text(), u"T"_s);
}

void TestServerButtons::noPictureIsAskedFor()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("GET /icons/g1"), 0);
    QVERIFY(serverButtons(probe).constFirst()->icon().isNull());
}

void TestServerButtons::aLoadedServerChangesNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> button = serverButtons(probe).constFirst();
    QVERIFY(callSlot(*probe.window, "onServerLoaded", Q_ARG(QJsonObject, server(u"g1"_s, u"Renamed"_s))));
    QVERIFY(button);
    QCOMPARE(button->toolTip(), u"One"_s);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestServerButtons)
#include "tst_server_buttons.moc"
