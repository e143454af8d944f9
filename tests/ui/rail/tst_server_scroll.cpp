// Many servers in the rail: they scroll inside their place and push nothing away.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/listed_server.h"
#include "tests/support/rail_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

/// Shows COUNT servers, and waits until they are laid out.
bool list(const RailPageProbe &probe, int count)
{
    probe.rail->showServers(servers(count));
    return waitFor([&] { return probe.column()->height() == qMax(0, count * 40 - 4); });
}

QScrollArea *placeOf(const RailPageProbe &probe)
{
    return probe.rail->findChild<QScrollArea *>();
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
    void init() { failOnToolkitWarnings(); }
    void fewServersHaveThePlaceTheyNeed();
    void theWheelReachesTheLastServer();
    void theTabKeyBringsAServerIntoView();
    void aNewListLeavesTheScrollingAlone();
    void theRailShowsBetweenTheButtons();
};

void TestServerScroll::fewServersHaveThePlaceTheyNeed()
{
    const RailPageProbe probe;
    QVERIFY(list(probe, 3));
    QTRY_COMPARE(placeOf(probe)->height(), 3 * 36 + 2 * 4);
    QVERIFY(list(probe, 5));
    QTRY_COMPARE(placeOf(probe)->height(), 5 * 36 + 4 * 4);
    QVERIFY(list(probe, 0));
    QTRY_COMPARE(placeOf(probe)->height(), 0);
}

void TestServerScroll::theWheelReachesTheLastServer()
{
    const RailPageProbe probe;
    QVERIFY(list(probe, 60));
    const QScrollArea *place = placeOf(probe);
    const QWidget *last = probe.buttons().at(59);
    QVERIFY(last->visibleRegion().isEmpty());
    turnWheel(place->viewport(), 200);
    QTRY_COMPARE(last->visibleRegion().boundingRect(), last->rect());
}

void TestServerScroll::theTabKeyBringsAServerIntoView()
{
    const RailPageProbe probe;
    QVERIFY(list(probe, 60));
    const QList<QAbstractButton *> buttons = probe.buttons();
    buttons.first()->setFocus();
    for (const QAbstractButton *button : buttons.mid(1)) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), button);
        QCOMPARE(button->visibleRegion().boundingRect(), button->rect());
    }
}

void TestServerScroll::aNewListLeavesTheScrollingAlone()
{
    const RailPageProbe probe;
    QVERIFY(list(probe, 60));
    QScrollBar *bar = placeOf(probe)->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 500);
    bar->setValue(500);
    QVERIFY(list(probe, 60));
    QCOMPARE(bar->value(), 500);
}

void TestServerScroll::theRailShowsBetweenTheButtons()
{
    const RailPageProbe probe;
    QVERIFY(list(probe, 2));
    QTRY_COMPARE(placeOf(probe)->height(), 2 * 36 + 4);
    const QImage seen = probe.rail->grab().toImage();
    const QPoint corner = placeOf(probe)->pos();
    QCOMPARE(seen.pixelColor(corner + QPoint(18, 37)), QColor(0x08, 0x0d, 0x12)); // between the two
    QCOMPARE(seen.pixelColor(corner), QColor(0x08, 0x0d, 0x12));                  // outside the round corner
}

TIDELOFT_GUI_TEST_MAIN(TestServerScroll)
#include "tst_server_scroll.moc"
