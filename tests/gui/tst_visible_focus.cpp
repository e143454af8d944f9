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
    void aClickAfterKeysIsNotMarked();
    void isShownInDialogs_data();
    void isShownInDialogs();
};

namespace
{

constexpr int signInPage = -3;
constexpr int emptyState = -2;
constexpr int conversation = -1;
const QList<int> stopsInSections{20, 19, 15, 20, 19, 22, 18, 12};

QImage picture(QWidget *widget)
{
    return widget->grab().toImage();
}

/// In hundredths of all.
double changedPixels(const QImage &with, const QImage &without)
{
    if (with.size() != without.size())
        return 100;
    qsizetype changed = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x)
            changed += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
    }
    return 100.0 * double(changed) / double(qsizetype(with.width()) * with.height());
}

/// A small control may change as a whole; of a list and a page the mark covers next to nothing.
bool isMarked(const QWidget *stop, const QImage &with, const QImage &without)
{
    const double changed = changedPixels(with, without);
    return changed > 0 && (!qobject_cast<const QAbstractScrollArea *>(stop) || changed < 5);
}

/// What STOP looks like once Tab has led away from it.
QImage pictureWithout(QWidget *window, QWidget *stop)
{
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    QWidget *next = window->focusWidget();
    if (!next || !stop->isAncestorOf(next))
        return picture(stop);
    next->clearFocus(); // what stands inside would show its own mark
    const QImage without = picture(stop);
    next->setFocus(Qt::TabFocusReason);
    return without;
}

struct TabStops {
    int stops = 0;
    QStringList unseen; ///< where Tab leads without it being seen
    bool isRound = false;
};

/// With the Tab key through WINDOW, until it comes back to the beginning.
TabStops tabStops(QWidget *window)
{
    TabStops reached;
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab); // who uses no keys is shown nothing
    const QWidget *first = window->focusWidget();
    for (QWidget *stop = window->focusWidget(); stop && reached.stops < 60; stop = window->focusWidget()) {
        ++reached.stops;
        const QImage with = picture(stop);
        if (!isMarked(stop, with, pictureWithout(window, stop)))
            reached.unseen.append(spokenName(stop));
        reached.isRound = window->focusWidget() == first;
        if (reached.isRound)
            break;
    }
    return reached;
}

} // namespace

void TestVisibleFocus::isShownWhereverTabLeads_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<bool>("isLight");
    QTest::addColumn<int>("stops");
    for (const bool isLight : {false, true}) {
        const char *theme = isLight ? "light" : "dark";
        QTest::addRow("sign-in page, %s", theme) << signInPage << isLight << 6;
        QTest::addRow("no conversation, %s", theme) << emptyState << isLight << 10;
        QTest::addRow("conversation, %s", theme) << conversation << isLight << 11;
    }
    for (int section = Account; section <= About; ++section) // they are dark in both themes
        QTest::addRow("settings, section %d", section) << section << false << stopsInSections.at(section);
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
    const TabStops reached = tabStops(probe.window.get());
    QVERIFY(reached.isRound);
    QTEST(reached.stops, "stops");
    QCOMPARE(reached.unseen.join(u'|'), QString());
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

// The window remembers that keys moved the keyboard in it; a click is none.
void TestVisibleFocus::aClickAfterKeysIsNotMarked()
{
    const SettingsProbe probe;
    auto *list = probe.the<QListWidget>(u"dmList"_s);
    const QImage without = picture(list);
    probe.the<QWidget>(u"sideSearch"_s)->setFocus();
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Tab);
    QVERIFY(list->hasFocus());
    QVERIFY(picture(list) != without);
    QTest::mouseClick(probe.the<QWidget>(u"sideSearch"_s), Qt::LeftButton);
    QTest::mouseClick(list->viewport(), Qt::LeftButton);
    QVERIFY(list->hasFocus());
    QCOMPARE(picture(list), without);
}

void TestVisibleFocus::isShownInDialogs_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("stops");
    QTest::newRow("create server") << u"railBtn=+"_s << 4;
    QTest::newRow("privacy") << u"quilloryBtn"_s << 5;
}

void TestVisibleFocus::isShownInDialogs()
{
    QFETCH(QString, button);
    const SettingsProbe probe;
    TabStops reached;
    QVERIFY(withDialog([&] { probe.click(button); }, [&](QDialog &dialog) { reached = tabStops(&dialog); }));
    QVERIFY(reached.isRound);
    QTEST(reached.stops, "stops");
    QCOMPARE(reached.unseen.join(u'|'), QString());
}

TIDELOFT_GUI_TEST_MAIN(TestVisibleFocus)
#include "tst_visible_focus.moc"
