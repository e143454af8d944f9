// The context menu of a server's button, and lists that arrive while it is open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/patience.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestServerMenu : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void entriesInTheirOrder_data();
    void entriesInTheirOrder();
    void opensTheServer_data();
    void opensTheServer();
    void opensTheServerOfItsButton();
    void entriesActWithoutAClick_data();
    void entriesActWithoutAClick();
    void asksForAPicture();
    void closedWithoutAChoiceDoesNothing();
    void aKeyOpensIt();
    void listArrivesWhileItIsOpen();
    void listThatArrivesMeanwhileLeavesTheKeyboard();
    void theServerVanishesWhileItIsOpen();
};

namespace
{

/// Has the list asked for, so that the reply can be let go while the menu is open.
bool holdNextList(GuiProbe &probe, const QByteArray &answer)
{
    probe.service.answer(requests::listServers, 200, answer);
    probe.service.hold(requests::listServers);
    const qsizetype before = probe.service.count(requests::listServers);
    return callSlot(*probe.window, "onServerIconUploaded", Q_ARG(QString, {}), Q_ARG(QString, {}))
           && probe.service.waitForRequests(requests::listServers, before + 1);
}

} // namespace

void TestServerMenu::entriesInTheirOrder_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("Swedish") << 0 << QStringList{u"Ladda upp server-ikon"_s, u"Öppna server"_s};
    QTest::newRow("English") << 1 << QStringList{u"Upload server icon"_s, u"Open server"_s};
}

void TestServerMenu::entriesInTheirOrder()
{
    QFETCH(int, language);
    QFETCH(QStringList, entries);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const QPoint expected = serverButtons(probe).constFirst()->mapToGlobal(QPoint(5, 5));
    const bool seen = withServerMenu(probe, [&](const QMenu *menu) {
        QCOMPARE(entriesOf(menu), entries);
        QCOMPARE(menu->pos(), expected);
        QCOMPARE(menu->parentWidget(), probe.window.get());
        QCOMPARE(menu->styleSheet(), QString());
    });
    QVERIFY(seen);
}

void TestServerMenu::opensTheServer_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("keyboard") << false;
}

void TestServerMenu::opensTheServer()
{
    QFETCH(bool, byMouse);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    QVERIFY(withServerMenu(probe, [byMouse](QMenu *menu) {
        if (byMouse) {
            clickEntry(menu, 1);
            return;
        }
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    }));
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
    QCOMPARE(serverChecks(probe), QList<bool>{true});
    QVERIFY(!old);
}

void TestServerMenu::opensTheServerOfItsButton()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)}));
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QVERIFY(probe.settle()); // the rebuilt buttons have their places
    QVERIFY(withServerMenu(
        probe, [](QMenu *menu) { clickEntry(menu, 1); }, 1));
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Two"_s);
    QCOMPARE(serverChecks(probe), (QList<bool>{false, true}));
}

void TestServerMenu::entriesActWithoutAClick_data()
{
    QTest::addColumn<bool>("byAssistant");
    QTest::addColumn<bool>("listArrives");
    QTest::newRow("triggered") << false << false;
    QTest::newRow("pressed by an assistive program") << true << false;
    QTest::newRow("pressed after a list has arrived") << true << true;
}

void TestServerMenu::entriesActWithoutAClick()
{
    QFETCH(bool, byAssistant);
    QFETCH(bool, listArrives);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    if (listArrives)
        QVERIFY(holdNextList(probe, R"([{"groupId":"g1","name":"One"}])"));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    bool wasClosed = false;
    QVERIFY(withServerMenu(probe, [&](QMenu *menu) {
        probe.service.release(requests::listServers);
        QVERIFY(!listArrives || waitFor([&] { return !old; }, patience()));
        if (byAssistant)
            pressAsAssistant(menu, 1);
        else
            menu->actions().at(1)->trigger();
        wasClosed = !menu->isVisible();
    }));
    QVERIFY(wasClosed);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
    QCOMPARE(serverChecks(probe), QList<bool>{true});
}

void TestServerMenu::asksForAPicture()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QString title;
    const bool asked =
        withDialog([&probe] { QVERIFY(withServerMenu(probe, [](QMenu *menu) { clickEntry(menu, 0); })); },
                   [&title](QDialog &dialog) {
                       title = dialog.windowTitle();
                       QTest::keyClick(&dialog, Qt::Key_Escape);
                   });
    QVERIFY(asked);
    QCOMPARE(title, u"Choose server icon"_s);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("POST /api/groups/g1/icon"), 0);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestServerMenu::closedWithoutAChoiceDoesNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> button = serverButtons(probe).constFirst();
    QVERIFY(withServerMenu(probe, [](QMenu *menu) { QTest::keyClick(menu, Qt::Key_Escape); }));
    QVERIFY(button);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QCOMPARE(serverChecks(probe), QList<bool>{false});
}

// The menu key, as a platform with one tells the window of it.
void TestServerMenu::aKeyOpensIt()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    serverButtons(probe).constFirst()->setFocus();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    const bool seen = withMenu([&] { QApplication::sendEvent(probe.window->windowHandle(), &menuKey); },
                               [](QMenu *menu) {
                                   QCOMPARE(menu->actions().size(), 2);
                                   QTest::keyClick(menu, Qt::Key_Up); // the last one
                                   QTest::keyClick(menu, Qt::Key_Return);
                               });
    QVERIFY(seen);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
}

void TestServerMenu::listArrivesWhileItIsOpen()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(holdNextList(probe, R"([{"groupId":"g1","name":"Renamed"}])"));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    bool rebuilt = false;
    QVERIFY(withServerMenu(probe, [&](QMenu *menu) {
        probe.service.release(requests::listServers);
        rebuilt = waitFor([&] { return !old; }, patience());
        menu->setActiveAction(menu->actions().at(1));
        QTest::keyClick(menu, Qt::Key_Return);
    }));
    QVERIFY(rebuilt);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Renamed"_s);
}

void TestServerMenu::listThatArrivesMeanwhileLeavesTheKeyboard()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(holdNextList(probe, R"([{"groupId":"g1","name":"Renamed"}])"));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    old->setFocus();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    bool rebuilt = false;
    QVERIFY(withMenu([&] { QApplication::sendEvent(probe.window->windowHandle(), &menuKey); },
                     [&](QMenu *menu) {
                         probe.service.release(requests::listServers);
                         // The menu may close before anything else has happened.
                         rebuilt = waitFor([&] { return !old; }, patience());
                         QTest::keyClick(menu, Qt::Key_Escape);
                     }));
    QVERIFY(rebuilt);
    QCOMPARE(probe.window->focusWidget(), serverButtons(probe).constFirst());
    QVERIFY(probe.settle());
    QCOMPARE(QApplication::focusWidget(), serverButtons(probe).constFirst());
}

void TestServerMenu::theServerVanishesWhileItIsOpen()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"group-1"_s, u"One"_s)}));
    QVERIFY(holdNextList(probe, "[]"));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    bool gone = false;
    QVERIFY(withServerMenu(probe, [&](QMenu *menu) {
        probe.service.release(requests::listServers);
        gone = waitFor([&] { return !old; }, patience());
        clickEntry(menu, 1);
    }));
    QVERIFY(gone);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"group-1"_s);
    QVERIFY(serverButtons(probe).isEmpty());
}

TIDELOFT_GUI_TEST_MAIN(TestServerMenu)
#include "tst_server_menu.moc"
