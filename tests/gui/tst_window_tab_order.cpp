// The way of the Tab key through the pages: in reading order, and past nothing without a name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/tab_order.h"
#include "tests/support/test_main.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QStringList rail{u"Messages"_s, u"Create server"_s, u"Settings"_s};
const QStringList sidebar{u"New conversation"_s, u"Search or start conversation"_s, u"Conversations"_s,
                          u"Account menu"_s, u"Quillory"_s};
const QStringList chat{u"Message"_s, u"Send"_s};

QWidget *messagesButton(const GuiProbe &probe)
{
    return named(*probe.window, u"railBtn=💬"_s);
}

} // namespace

class TestWindowTabOrder : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void signInPage();
    void emptyState();
    void openConversation();
    void resultsFollowTheSearch();
    void serversStandBetweenMessagesAndCreating();
};

void TestWindowTabOrder::signInPage()
{
    const GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QCOMPARE(tabOrder(probe.page(), probe.the<QWidget>(u"langCombo"_s)),
             QStringList({u"Language"_s, u"Username"_s, u"Password"_s, u"Kom ihåg mig i 30 dagar"_s,
                          u"Sign in"_s, u"Create account"_s}));
}

void TestWindowTabOrder::emptyState()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QVERIFY(probe.signIn());
    QCOMPARE(tabOrder(probe.page(), messagesButton(probe)),
             rail + sidebar + QStringList{u"➕  Start new conversation"_s});
}

void TestWindowTabOrder::openConversation()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QVERIFY(probe.signIn() && probe.open(u"bob"_s));
    QCOMPARE(tabOrder(probe.page(), messagesButton(probe)), rail + sidebar + chat);
}

void TestWindowTabOrder::resultsFollowTheSearch()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QVERIFY(probe.signIn());
    const QJsonArray users{QJsonObject{{u"username"_s, u"bob"_s}}};
    QVERIFY(callSlot(*probe.window, "onSearchLoaded", Q_ARG(QJsonArray, users)));
    QStringList found = sidebar;
    found.insert(2, u"Search results"_s);
    QCOMPARE(tabOrder(probe.page(), messagesButton(probe)).mid(rail.size(), found.size()), found);
}

void TestWindowTabOrder::serversStandBetweenMessagesAndCreating()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QVERIFY(probe.signIn());
    const QStringList expected{u"Messages"_s, u"Harbour"_s, u"Pier"_s, u"Create server"_s, u"Settings"_s};
    const QJsonArray servers{server(u"1"_s, u"Harbour"_s), server(u"2"_s, u"Pier"_s)};
    // Rebuilt again and again, they keep their place.
    for (int i = 0; i < 3; ++i) {
        QVERIFY(listServers(probe, servers)); // and laid out: what is not is passed by
        QCOMPARE(tabOrder(probe.page(), messagesButton(probe)).mid(0, expected.size()), expected);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestWindowTabOrder)
#include "tst_window_tab_order.moc"
