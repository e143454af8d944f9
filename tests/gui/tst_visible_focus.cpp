// Wherever the Tab key leads, it can be seen that the keyboard is there, in both themes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_accessible_probe.h"
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestVisibleFocus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void isShownWhereverTabLeads_data();
    void isShownWhereverTabLeads();
    void aConversationIsMarkedAfterARefresh();
    void aClickIsNotMarked();
    void isShownInDialogs_data();
    void isShownInDialogs();
};

namespace
{

constexpr int signInPage = -3;
constexpr int emptyState = -2;
constexpr int conversation = -1;

QImage picture(QWidget *widget)
{
    return widget->grab().toImage();
}

/// Where in WINDOW the Tab key leads without it being seen.
QStringList unseenStops(QWidget *window)
{
    QStringList unseen;
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab); // who uses no keys is shown nothing
    const QWidget *first = window->focusWidget();
    for (int steps = 0; steps < 60; ++steps) {
        QWidget *stop = window->focusWidget();
        if (!stop || (steps > 0 && stop == first))
            break;
        const QImage with = picture(stop);
        QWidget *before = nullptr;
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        before = window->focusWidget();
        const bool isInside = before && stop->isAncestorOf(before);
        if (isInside)
            before->clearFocus(); // what stands inside would show its own mark
        if (picture(stop) == with)
            unseen.append(spokenName(stop));
        if (isInside)
            before->setFocus(Qt::TabFocusReason);
    }
    return unseen;
}

} // namespace

void TestVisibleFocus::isShownWhereverTabLeads_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<bool>("isLight");
    for (const bool isLight : {false, true}) {
        const char *theme = isLight ? "light" : "dark";
        QTest::addRow("sign-in page, %s", theme) << signInPage << isLight;
        QTest::addRow("no conversation, %s", theme) << emptyState << isLight;
        QTest::addRow("conversation, %s", theme) << conversation << isLight;
    }
    for (int section = Account; section <= About; ++section) // they are dark in both themes
        QTest::addRow("settings, section %d", section) << section << false;
}

void TestVisibleFocus::isShownWhereverTabLeads()
{
    QFETCH(int, page);
    QFETCH(bool, isLight);
    SettingsProbe probe;
    probe.openSettings();
    buttonWith(probe.content(Appearance), isLight ? u"Light"_s : u"Dark"_s)->click();
    QVERIFY(listServers(probe, {server(u"g"_s, u"Reef"_s)}));
    if (page >= Account)
        probe.clickRow(page);
    else
        QTest::mouseClick(probe.messagesButton(), Qt::LeftButton);
    QVERIFY(page != conversation || probe.open(u"bob"_s));
    if (page == signInPage)
        probe.window->logOut();
    QCOMPARE(unseenStops(probe.window.get()).join(u'|'), QString());
}

// The row's own mark goes with every refresh, the keyboard stays.
void TestVisibleFocus::aConversationIsMarkedAfterARefresh()
{
    SettingsProbe probe;
    QVERIFY(probe.listPeers({u"anna"_s, u"bob"_s}));
    auto *list = probe.the<QListWidget>(u"dmList"_s);
    probe.the<QWidget>(u"sideSearch"_s)->setFocus();
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Tab);
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Down);
    QVERIFY(probe.listPeers({u"anna"_s, u"bob"_s, u"carl"_s}));
    QCOMPARE(list->currentRow(), 1);
    QVERIFY(list->selectedItems().isEmpty());
    const QRect marked = list->visualItemRect(list->item(1)).translated(list->viewport()->pos());
    const QRect other = list->visualItemRect(list->item(0)).translated(list->viewport()->pos());
    const QImage with = picture(list);
    list->clearFocus();
    const QImage without = picture(list);
    QVERIFY(with.copy(marked) != without.copy(marked));
    QCOMPARE(with.copy(other), without.copy(other));
}

void TestVisibleFocus::aClickIsNotMarked()
{
    const SettingsProbe probe;
    auto *list = probe.the<QListWidget>(u"dmList"_s);
    const QImage without = picture(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton);
    QVERIFY(list->hasFocus());
    QCOMPARE(picture(list), without);
}

void TestVisibleFocus::isShownInDialogs_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("create server") << u"railBtn=+"_s;
    QTest::newRow("privacy") << u"quilloryBtn"_s;
}

void TestVisibleFocus::isShownInDialogs()
{
    QFETCH(QString, button);
    const SettingsProbe probe;
    QStringList unseen;
    QVERIFY(
        withDialog([&] { probe.click(button); }, [&](QDialog &dialog) { unseen = unseenStops(&dialog); }));
    QCOMPARE(unseen.join(u'|'), QString());
}

TIDELOFT_GUI_TEST_MAIN(TestVisibleFocus)
#include "tst_visible_focus.moc"
