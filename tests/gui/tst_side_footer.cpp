// The sidebar's footer: what a press on each of its places brings up.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSideFooter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void pressesOnItsPlaces_data();
    void pressesOnItsPlaces();
    void positionsAreRounded_data();
    void positionsAreRounded();
    void everyButtonOpensTheMenu_data();
    void everyButtonOpensTheMenu();
    void aReleaseAloneDoesNothing();
    void anUnansweredChoiceSendsNothing();
    void privacyButtonIsItsOwn();
    void independentOfThePrivacySection();
    void aLongStatusIsElided();
};

namespace
{

QWidget *footerOf(const GuiProbe &probe)
{
    return probe.the<QWidget>(u"sideFooter"_s);
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
    SettingsProbe probe;
    QWidget *footer = footerOf(probe);
    const QRect avatar = probe.the<QLabel>(u"footerAvatar"_s)->geometry();
    QCOMPARE(avatar.size(), QSize(34, 34));
    QPoint spot = corner == "last" ? avatar.bottomRight() : avatar.topLeft();
    if (corner != "first" && corner != "last")
        spot = probe.the<QWidget>(QString::fromLatin1(corner))->pos();
    const QString seen = broughtUp([&] { clickAt(footer, spot + offset); });
    QTEST(seen, "expected");
    QVERIFY(probe.onMainPage());
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
    const SettingsProbe probe;
    QWidget *footer = footerOf(probe);
    const QPointF spot = probe.the<QLabel>(u"footerAvatar"_s)->geometry().topLeft() + offset;
    bool consumed = false;
    const QString seen = broughtUp([&] {
        QMouseEvent event(QEvent::MouseButtonPress, spot, footer->mapToGlobal(spot), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        consumed = QApplication::sendEvent(footer, &event);
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
    const SettingsProbe probe;
    QCOMPARE(broughtUp([&] { press(footerOf(probe), {150, 5}, button); }), u"menu"_s);
}

void TestSideFooter::aReleaseAloneDoesNothing()
{
    const SettingsProbe probe;
    const QWidget *footer = footerOf(probe);
    const QPoint spot = footer->mapTo(probe.window.get(), QPoint(150, 5));
    QCOMPARE(broughtUp([&] {
                 QTest::mousePress(probe.window->windowHandle(), Qt::LeftButton, {}, QPoint(600, 300));
                 QTest::mouseRelease(probe.window->windowHandle(), Qt::LeftButton, {}, spot);
                 QTest::mouseMove(probe.window->windowHandle(), spot + QPoint(5, 5));
             }),
             u"nothing"_s);
}

void TestSideFooter::anUnansweredChoiceSendsNothing()
{
    SettingsProbe probe;
    probe.service.clear();
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    QVERIFY(withDialog(
        [avatar] {
            clickAt(avatar, {17, 17});
        },
        [](QDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!avatar->text().isEmpty());
}

void TestSideFooter::privacyButtonIsItsOwn()
{
    const SettingsProbe probe;
    const auto *button = probe.the<QPushButton>(u"quilloryBtn"_s);
    QCOMPARE(broughtUp([&] { clickOnScreen(*button); }), u"Quillory — Privacy"_s);
}

// A label that cannot be narrower than its text would be cut at the footer's end, or cut its neighbour.
void TestSideFooter::aLongStatusIsElided()
{
    const SettingsProbe probe;
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

// The dialog that the button opens has check boxes of the same names as switches of the settings.
void TestSideFooter::independentOfThePrivacySection()
{
    const SettingsProbe probe;
    probe.openSettings();
    probe.clickRow(Privacy);
    auto *profile = probe.row(Privacy, u"Public profile"_s)->findChild<QPushButton *>();
    auto *messages = probe.row(Privacy, u"Allow DMs from everyone"_s)->findChild<QPushButton *>();
    QTest::mouseClick(profile, Qt::LeftButton); // off in the section
    const bool came =
        withDialog([&probe] { probe.click(u"quilloryBtn"_s); },
                   [](const QDialog &dialog) {
                       QVERIFY(dialog.findChildren<QCheckBox *>().constFirst()->isChecked());
                       dialog.findChildren<QCheckBox *>().constLast()->click(); // off in the dialog
                       QTest::mouseClick(only<QPushButton>(dialog, {}), Qt::LeftButton);
                   });
    QVERIFY(came);
    QVERIFY(!profile->isChecked());
    QVERIFY(messages->isChecked());
}

TIDELOFT_GUI_TEST_MAIN(TestSideFooter)
#include "tst_side_footer.moc"
