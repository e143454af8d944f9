// Many servers in the rail: they scroll inside their place and push nothing away.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

QJsonArray servers(int count)
{
    QJsonArray list;
    for (int i = 0; i < count; ++i)
        list.append(server(QString::number(i), u"Server %1"_s.arg(i)));
    return list;
}

bool list(GuiProbe &probe, int count)
{
    return listServers(probe, servers(count))
           && waitFor([&] { return serverPlace(probe)->widget()->height() >= count * 36; });
}

QRect inWindow(const QWidget *widget, const QWidget *window)
{
    return {widget->mapTo(window, QPoint(0, 0)), widget->size()};
}

void turnWheel(QWidget *widget, int notches)
{
    const QPoint middle = widget->rect().center();
    for (int i = 0; i < notches; ++i) {
        QWheelEvent turn(middle, widget->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &turn);
    }
}

} // namespace

class TestServerScroll : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void fewServersHaveThePlaceTheyNeed();
    void manyServersLeaveTheWindowAndTheButtonsWhereTheyAre();
    void theWheelReachesTheLastServer();
    void theTabKeyBringsAServerIntoView();
    void openingAServerBringsItIntoView();
    void aNewListLeavesTheScrollingAlone();
    void theKeyboardStaysWithItsServer();
    void theRailShowsBetweenTheButtons();
};

void TestServerScroll::fewServersHaveThePlaceTheyNeed()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 3));
    QTRY_COMPARE(serverPlace(probe)->height(), 3 * 36 + 2 * 4);
    QVERIFY(list(probe, 5));
    QTRY_COMPARE(serverPlace(probe)->height(), 5 * 36 + 4 * 4);
    QVERIFY(list(probe, 0));
    QTRY_COMPARE(serverPlace(probe)->height(), 0);
}

void TestServerScroll::manyServersLeaveTheWindowAndTheButtonsWhereTheyAre()
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

void TestServerScroll::theWheelReachesTheLastServer()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 60));
    const QScrollArea *place = serverPlace(probe);
    const QWidget *last = serverButtons(probe).at(59);
    QVERIFY(last->visibleRegion().isEmpty());
    turnWheel(place->viewport(), 200);
    QTRY_COMPARE(last->visibleRegion().boundingRect(), last->rect());
}

void TestServerScroll::theTabKeyBringsAServerIntoView()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 60));
    const QList<QAbstractButton *> buttons = serverButtons(probe);
    buttons.first()->setFocus();
    for (const QAbstractButton *button : buttons.mid(1)) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), button);
        QCOMPARE(button->visibleRegion().boundingRect(), button->rect());
    }
}

void TestServerScroll::openingAServerBringsItIntoView()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 60));
    const QJsonObject created{{u"groupId"_s, u"59"_s}};
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, created)));
    QTRY_COMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Server 59"_s);
    QTRY_COMPARE(serverButtons(probe).at(59)->visibleRegion().boundingRect(), QRect(0, 0, 36, 36));
}

void TestServerScroll::aNewListLeavesTheScrollingAlone()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 60));
    QScrollBar *bar = serverPlace(probe)->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 500);
    bar->setValue(500);
    QVERIFY(list(probe, 60) && probe.settle());
    QCOMPARE(bar->value(), 500);
}

void TestServerScroll::theKeyboardStaysWithItsServer()
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

void TestServerScroll::theRailShowsBetweenTheButtons()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && list(probe, 2));
    QTRY_COMPARE(serverPlace(probe)->height(), 2 * 36 + 4);
    auto *rail = probe.the<QWidget>(u"rail"_s);
    const QImage seen = rail->grab().toImage();
    const QPoint corner = serverPlace(probe)->pos();
    QCOMPARE(seen.pixelColor(corner + QPoint(18, 37)), QColor(0x08, 0x0d, 0x12)); // between the two
    QCOMPARE(seen.pixelColor(corner), QColor(0x08, 0x0d, 0x12));                  // outside the round corner
}

TIDELOFT_GUI_TEST_MAIN(TestServerScroll)
#include "tst_server_scroll.moc"
