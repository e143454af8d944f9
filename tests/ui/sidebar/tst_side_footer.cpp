// The sidebar's footer: what a press on each of its places brings up.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/popups.h"
#include "tests/support/sidebar_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSideFooter : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void pressesOnItsPlaces_data();
    void pressesOnItsPlaces();
    void positionsAreRounded_data();
    void positionsAreRounded();
    void everyButtonOpensTheMenu_data();
    void everyButtonOpensTheMenu();
    void aReleaseAloneDoesNothing();
    void privacyButtonIsItsOwn();
    void aLongStatusIsElided();
};

namespace
{

/// What OPEN brings up; "picture" where the footer asks for the choice of one.
QString answerTo(const SidebarPageProbe &probe, const std::function<void()> &open)
{
    const QString seen = broughtUp(open);
    return probe.pictures.isEmpty() ? seen : seen == u"nothing" ? u"picture"_s : u"both"_s;
}

} // namespace

void TestSideFooter::pressesOnItsPlaces_data()
{
    QTest::addColumn<QByteArray>("corner");
    QTest::addColumn<QPoint>("offset");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first pixel of the avatar") << QByteArray("first") << QPoint(0, 0) << u"picture"_s;
    QTest::newRow("middle of the avatar") << QByteArray("first") << QPoint(17, 17) << u"picture"_s;
    QTest::newRow("last pixel of the avatar") << QByteArray("last") << QPoint(0, 0) << u"picture"_s;
    QTest::newRow("left of the avatar") << QByteArray("first") << QPoint(-1, 10) << u"menu"_s;
    QTest::newRow("above the avatar") << QByteArray("first") << QPoint(10, -1) << u"menu"_s;
    QTest::newRow("right of the avatar") << QByteArray("last") << QPoint(1, -10) << u"menu"_s;
    QTest::newRow("below the avatar") << QByteArray("last") << QPoint(-10, 1) << u"menu"_s;
    QTest::newRow("the name") << QByteArray("myName") << QPoint(2, 2) << u"menu"_s;
    QTest::newRow("the status") << QByteArray("myStatus") << QPoint(2, 2) << u"menu"_s;
    QTest::newRow("the chevron") << QByteArray("footerChevron") << QPoint(2, 2) << u"menu"_s;
}

void TestSideFooter::pressesOnItsPlaces()
{
    QFETCH(QByteArray, corner);
    QFETCH(QPoint, offset);
    const SidebarPageProbe probe;
    const QRect avatar = probe.the<QLabel>(u"footerAvatar"_s)->geometry();
    QCOMPARE(avatar.size(), QSize(34, 34));
    QPoint spot = corner == "last" ? avatar.bottomRight() : avatar.topLeft();
    if (corner != "first" && corner != "last")
        spot = probe.the<QWidget>(QString::fromLatin1(corner))->pos();
    QTEST(answerTo(probe, [&] { clickAt(probe.footer, spot + offset); }), "expected");
    QCOMPARE(probe.sentSignals(), probe.pictures.size());
}

void TestSideFooter::positionsAreRounded_data()
{
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<QString>("expected");
    QTest::newRow("0.4 before the first pixel") << QPointF(-0.4, 10) << u"picture"_s;
    QTest::newRow("0.6 before the first pixel") << QPointF(-0.6, 10) << u"menu"_s;
    QTest::newRow("0.4 behind the last pixel") << QPointF(33.4, 10) << u"picture"_s;
    QTest::newRow("0.6 behind the last pixel") << QPointF(33.6, 10) << u"menu"_s;
}

void TestSideFooter::positionsAreRounded()
{
    QFETCH(QPointF, offset);
    const SidebarPageProbe probe;
    const QPointF spot = probe.the<QLabel>(u"footerAvatar"_s)->geometry().topLeft() + offset;
    bool consumed = false;
    const QString seen = answerTo(probe, [&] {
        QMouseEvent event(QEvent::MouseButtonPress, spot, probe.footer->mapToGlobal(spot), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        consumed = QApplication::sendEvent(probe.footer, &event);
    });
    QTEST(seen, "expected");
    QVERIFY(consumed);
}

void TestSideFooter::everyButtonOpensTheMenu_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void TestSideFooter::everyButtonOpensTheMenu()
{
    QFETCH(Qt::MouseButton, button);
    const SidebarPageProbe probe;
    QCOMPARE(answerTo(probe, [&] { press(probe.footer, {150, 5}, button); }), u"menu"_s);
}

void TestSideFooter::aReleaseAloneDoesNothing()
{
    const SidebarPageProbe probe;
    const QPoint spot = probe.footer->mapTo(&probe.window, QPoint(150, 5));
    QWindow *window = probe.window.windowHandle();
    QCOMPARE(answerTo(probe,
                      [&] {
                          QTest::mousePress(window, Qt::LeftButton, {}, QPoint(130, 300));
                          QTest::mouseRelease(window, Qt::LeftButton, {}, spot);
                          QTest::mouseMove(window, spot + QPoint(5, 5));
                      }),
             u"nothing"_s);
    QCOMPARE(probe.sentSignals(), 0);
}

void TestSideFooter::privacyButtonIsItsOwn()
{
    const SidebarPageProbe probe;
    const auto *button = probe.the<QPushButton>(u"quilloryBtn"_s);
    QCOMPARE(answerTo(probe, [&] { clickOnScreen(*button); }), u"Quillory — Privacy"_s);
}

// A label that cannot be narrower than its text would be cut at the footer's end, or cut its neighbour.
void TestSideFooter::aLongStatusIsElided()
{
    const SidebarPageProbe probe;
    auto *status = probe.the<QLabel>(u"myStatus"_s);
    const auto *button = probe.the<QPushButton>(u"quilloryBtn"_s);
    const QRect place = button->geometry();
    status->setText(u"✓ Picture updated, and more words than the footer has room for"_s);
    QApplication::processEvents();
    QTRY_COMPARE(button->geometry(), place);
    QVERIFY(status->geometry().right() < place.left());
    const QImage shown = status->grab().toImage();
    status->setText(status->fontMetrics().elidedText(status->text(), Qt::ElideRight, status->width()));
    QVERIFY(status->text().endsWith(u'…'));
    QTRY_COMPARE(status->grab().toImage(), shown);
}

TIDELOFT_GUI_TEST_MAIN(TestSideFooter)
#include "tst_side_footer.moc"
