// Opening a server: what the chat panel shows, and the mark in the rail.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestServerOpening : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void showsTheNotice_data();
    void showsTheNotice();
    void withoutANameShowsTheIdentifier();
    void sendsNothing();
    void theOpenServerStaysMarkedAcrossLists();
    void theFirstOfTwoWithOneIdentifierNamesIt();
    void leavesTheRailsOwnButtons();
    void keysAndClicksOpen_data();
    void keysAndClicksOpen();
    void otherKeysDoNotOpen_data();
    void otherKeysDoNotOpen();
    void aPressThatLeavesTheButtonDoesNotOpen();
};

void TestServerOpening::showsTheNotice_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("notice");
    QTest::newRow("Swedish") << 0 << u"Server-chatt kommer snart. Välj en kanal från webklienten."_s;
    QTest::newRow("English") << 1 << u"Server chat coming soon. Select a channel from the web client."_s;
}

void TestServerOpening::showsTheNotice()
{
    QFETCH(int, language);
    QFETCH(QString, notice);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"my Club"_s)}));
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"my Club"_s);
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"Server"_s);
    QCOMPARE(probe.the<QLabel>(u"peerAvatar"_s)->text(), u"M"_s);
    const auto *messages = probe.the<QListWidget>(u"messageList"_s);
    QCOMPARE(messages->count(), 1);
    QListWidgetItem *item = messages->item(0);
    QCOMPARE(item->flags(), Qt::NoItemFlags);
    const QWidget *row = messages->itemWidget(item);
    QCOMPARE(item->sizeHint(), row->sizeHint());
    const auto labels = row->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), notice);
    QCOMPARE(labels.first()->styleSheet(), u"color: #5a7a9a; font-size: 13px; background: transparent;"_s);
    QCOMPARE(labels.first()->alignment(), Qt::AlignCenter);
    QVERIFY(labels.first()->wordWrap());
}

void TestServerOpening::withoutANameShowsTheIdentifier()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"group-7"_s, {})}));
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"group-7"_s);
    QCOMPARE(probe.the<QLabel>(u"peerAvatar"_s)->text(), QString());
}

void TestServerOpening::sendsNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.refreshTimer()->stop();
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(probe.settle());
    probe.service.clear();
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
}

void TestServerOpening::theOpenServerStaysMarkedAcrossLists()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)}));
    QTest::mouseClick(serverButtons(probe).at(1), Qt::LeftButton);
    QVERIFY(listServers(probe, {server(u"g2"_s, u"Two"_s), server(u"g3"_s, u"Three"_s)}));
    QCOMPARE(serverChecks(probe), (QList<bool>{true, false}));
    // A click on the open one does not uncheck it.
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QCOMPARE(serverChecks(probe), (QList<bool>{true, false}));
}

void TestServerOpening::theFirstOfTwoWithOneIdentifierNamesIt()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s), server(u"g1"_s, u"Again"_s)}));
    QTest::mouseClick(serverButtons(probe).at(1), Qt::LeftButton);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
    QCOMPARE(serverChecks(probe), (QList<bool>{true, true}));
}

void TestServerOpening::leavesTheRailsOwnButtons()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    probe.click(u"railBtn=⚙"_s);
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QVERIFY(named(*probe.window, u"railBtn=⚙"_s)->property("checked").toBool());
    QVERIFY(!named(*probe.window, u"railBtn=💬"_s)->property("checked").toBool());
}

void TestServerOpening::keysAndClicksOpen_data()
{
    QTest::addColumn<QString>("way");
    for (const QString &way : {u"click"_s, u"double click"_s, u"space"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

// Each rebuilds the rail from inside an event of a button that the rebuild deletes.
void TestServerOpening::keysAndClicksOpen()
{
    QFETCH(QString, way);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    if (way == u"space") {
        old->setFocus();
        QTest::keyClick(probe.window->windowHandle(), Qt::Key_Space); // to whatever has the focus by then
    } else {
        const QPoint spot = old->mapTo(probe.window.get(), old->rect().center());
        QTest::mouseClick(probe.window->windowHandle(), Qt::LeftButton, {}, spot);
        if (way == u"double click")
            QTest::mouseDClick(probe.window->windowHandle(), Qt::LeftButton, {}, spot);
    }
    QVERIFY(!old);
    QCOMPARE(serverChecks(probe), QList<bool>{true});
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
}

void TestServerOpening::otherKeysDoNotOpen_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("the initial") << Qt::Key_O;
    QTest::newRow("Down") << Qt::Key_Down;
}

void TestServerOpening::otherKeysDoNotOpen()
{
    QFETCH(Qt::Key, key);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    serverButtons(probe).constFirst()->setFocus();
    QTest::keyClick(probe.window->windowHandle(), key);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QCOMPARE(serverChecks(probe), QList<bool>{false});
}

void TestServerOpening::aPressThatLeavesTheButtonDoesNotOpen()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    press(serverButtons(probe).constFirst(), {18, 18});
    QTest::mouseRelease(probe.window->windowHandle(), Qt::LeftButton, {}, QPoint(600, 300));
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QCOMPARE(serverChecks(probe), QList<bool>{false});
}

TIDELOFT_GUI_TEST_MAIN(TestServerOpening)
#include "tst_server_opening.moc"
