// The servers' buttons in the window's rail: what fills the rail, and what does not change when it is filled.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>

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
    void manyServersLeaveTheWindowAndTheButtonsWhereTheyAre();
    void openingAServerBringsItIntoView();
    void theKeyboardStaysWithItsServer();
};

namespace
{

bool list(GuiProbe &probe, int count)
{
    return listServers(probe, servers(count))
           && waitFor([&] { return serverPlace(probe)->widget()->height() >= count * 36; });
}

QRect inWindow(const QWidget *widget, const QWidget *window)
{
    return {widget->mapTo(window, QPoint(0, 0)), widget->size()};
}

} // namespace

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

void TestServerButtons::manyServersLeaveTheWindowAndTheButtonsWhereTheyAre()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 0));
    probe.window->resize(probe.window->minimumSize());
    const QSize least = probe.window->minimumSizeHint();
    const QSize size = probe.window->size();
    QVERIFY(list(probe, 200));
    QCOMPARE(probe.window->minimumSizeHint(), least);
    QCOMPARE(probe.window->size(), size);
    for (const auto *button : probe.window->findChildren<QPushButton *>(u"railBtn"_s)) {
        QCOMPARE(button->size(), QSize(36, 36));
        QVERIFY(probe.window->rect().contains(inWindow(button, probe.window.get())));
    }
}

void TestServerButtons::openingAServerBringsItIntoView()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 60));
    const QJsonObject created{{u"groupId"_s, u"59"_s}};
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, created)));
    QTRY_COMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Server 59"_s);
    QTRY_COMPARE(serverButtons(probe).at(59)->visibleRegion().boundingRect(), QRect(0, 0, 36, 36));
}

void TestServerButtons::theKeyboardStaysWithItsServer()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 3));
    serverButtons(probe).at(1)->setFocus();
    QTest::keyClick(serverButtons(probe).at(1), Qt::Key_Space); // opens it, which rebuilds the column
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Server 1"_s);
    QTRY_COMPARE(QApplication::focusWidget(), serverButtons(probe).at(1));
    QVERIFY(list(probe, 2));
    QTRY_COMPARE(QApplication::focusWidget(), serverButtons(probe).at(1));
    QVERIFY(list(probe, 1)); // it is gone
    QVERIFY(!serverPlace(probe)->isAncestorOf(QApplication::focusWidget()));
}

TIDELOFT_GUI_TEST_MAIN(TestServerButtons)
#include "tst_server_buttons.moc"
