// The rail: its own buttons, the mark of the chosen server, and what it says of clicks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/listed_server.h"
#include "tests/support/rail_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Rail;

class TestRail : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void oneOfTwoPlacesIsMarked();
    void clicksAreToldApart();
    void aClickedServerIsNamedByItsIdentifier();
    void theChosenServerStaysMarkedAcrossLists();
    void namesAreThoseOfTheList();
    void forgottenServersLeaveNothing();
    void theKeyboardGoesToTheMarkedServer();
    void textsFollowTheLanguage();
};

namespace
{

QPushButton *railButton(const RailPageProbe &probe, const QString &text)
{
    return static_cast<QPushButton *>(named(probe.window, u"railBtn="_s + text));
}

QList<bool> checks(const RailPageProbe &probe)
{
    QList<bool> checked;
    for (const QAbstractButton *button : probe.buttons())
        checked.append(button->isChecked());
    return checked;
}

} // namespace

void TestRail::oneOfTwoPlacesIsMarked()
{
    const RailPageProbe probe;
    QVERIFY(railButton(probe, u"💬"_s)->isChecked());
    QVERIFY(!railButton(probe, u"⚙"_s)->isChecked());
    probe.rail->markPlace(Rail::Place::Settings);
    QVERIFY(!railButton(probe, u"💬"_s)->isChecked());
    QVERIFY(railButton(probe, u"⚙"_s)->isChecked());
}

void TestRail::clicksAreToldApart()
{
    const RailPageProbe probe;
    const QSignalSpy messages(probe.rail, &Rail::messagesClicked);
    const QSignalSpy settings(probe.rail, &Rail::settingsClicked);
    QTest::mouseClick(railButton(probe, u"💬"_s), Qt::LeftButton);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(settings.size(), 0);
    QTest::mouseClick(railButton(probe, u"⚙"_s), Qt::LeftButton);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(settings.size(), 1);
}

void TestRail::aClickedServerIsNamedByItsIdentifier()
{
    const RailPageProbe probe;
    const QSignalSpy chosen(probe.rail, &Rail::serverChosen);
    probe.rail->showServers(servers(3));
    QTRY_VERIFY(!probe.buttons().at(2)->visibleRegion().isEmpty());
    QTest::mouseClick(probe.buttons().at(2), Qt::LeftButton);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toString(), u"2"_s);
    QCOMPARE(checks(probe), (QList<bool>{false, false, true}));
}

void TestRail::theChosenServerStaysMarkedAcrossLists()
{
    const RailPageProbe probe;
    probe.rail->showServers(servers(2));
    probe.rail->selectServer(u"1"_s);
    QCOMPARE(checks(probe), (QList<bool>{false, true}));
    probe.rail->showServers(servers(3));
    QCOMPARE(checks(probe), (QList<bool>{false, true, false}));
    probe.rail->showServers(servers(1)); // it is not listed any more
    QCOMPARE(checks(probe), (QList<bool>{false}));
}

void TestRail::namesAreThoseOfTheList()
{
    const RailPageProbe probe;
    probe.rail->showServers(servers(2));
    QCOMPARE(probe.rail->serverName(u"1"_s), u"Server 1"_s);
    QCOMPARE(probe.rail->serverName(u"2"_s), QString());
}

void TestRail::forgottenServersLeaveNothing()
{
    const RailPageProbe probe;
    probe.rail->showServers(servers(2));
    probe.rail->selectServer(u"1"_s);
    probe.rail->forgetServers();
    QVERIFY(probe.buttons().isEmpty());
    QCOMPARE(probe.rail->serverName(u"1"_s), QString());
    probe.rail->showServers(servers(2)); // the next user's
    QCOMPARE(checks(probe), (QList<bool>{false, false}));
}

void TestRail::theKeyboardGoesToTheMarkedServer()
{
    const RailPageProbe probe;
    QVERIFY(!probe.rail->focusSelectedServer());
    probe.rail->showServers(servers(2));
    probe.rail->selectServer(u"1"_s);
    QVERIFY(probe.rail->focusSelectedServer());
    QTRY_VERIFY(probe.buttons().at(1)->hasFocus());
}

// The tool tip of the button that makes a server keeps the language in which the button was made.
void TestRail::textsFollowTheLanguage()
{
    const RailPageProbe probe;
    probe.rail->retranslate(tideloft::ui::Language::Swedish);
    QCOMPARE(railButton(probe, u"💬"_s)->toolTip(), u"Meddelanden"_s);
    QCOMPARE(railButton(probe, u"⚙"_s)->toolTip(), u"Inställningar"_s);
    QCOMPARE(railButton(probe, u"+"_s)->toolTip(), u"Create server"_s);
    QCOMPARE(railButton(probe, u"+"_s)->accessibleName(), u"Skapa server"_s);
    QCOMPARE(probe.column()->accessibleName(), u"Servrar"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestRail)
#include "tst_rail.moc"
