// The sidebar's footer: what a press on each of its places brings up, and what its keys do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_popups.h"
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
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
    void keysOpenTheMenu_data();
    void keysOpenTheMenu();
    void otherKeysDoNothing_data();
    void otherKeysDoNothing();
    void aHeldKeyOpensOneMenu_data();
    void aHeldKeyOpensOneMenu();
    void tabReachesIt();
};

namespace
{

QWidget *footerOf(const GuiProbe &probe)
{
    return probe.the<QWidget>(u"sideFooter"_s);
}

/// Counts the menus that come up.
class MenuCount : public QObject
{
public:
    MenuCount() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        shown += event->type() == QEvent::Show && qobject_cast<QMenu *>(watched);
        return false;
    }

    int shown = 0;
};

/// What OPEN brings up: "menu", "picture" for the choice of one, or "nothing".
QString broughtUp(const std::function<void()> &open)
{
    QString seen = u"nothing"_s;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&seen] {
        QWidget *menu = QApplication::activePopupWidget();
        QWidget *dialog = QApplication::activeModalWidget();
        if (!menu && !dialog)
            return;
        seen = menu ? u"menu"_s : u"picture"_s;
        if (dialog && dialog->windowTitle() != u"Choose profile picture")
            seen = dialog->windowTitle();
        (menu ? menu : dialog)->close();
    });
    watch.start(0);
    open();
    QCoreApplication::processEvents();
    return seen;
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

void TestSideFooter::keysOpenTheMenu_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
    QTest::newRow("keypad Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Space") << Qt::Key_Space << Qt::KeyboardModifiers();
}

void TestSideFooter::keysOpenTheMenu()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const SettingsProbe probe;
    QWidget *footer = footerOf(probe);
    footer->setFocus();
    const bool seen = withMenu(
        [&] { QTest::keyClick(probe.window->windowHandle(), key, modifiers); },
        [footer](QMenu *menu) {
            QCOMPARE(entriesOf(menu), (QStringList{u"Profile"_s, u"Settings"_s, u"-"_s, u"Log out"_s}));
            QCOMPARE(menu->y() + menu->height() + 4, footer->mapToGlobal(QPoint(0, 0)).y());
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return); // the choice opens no second menu
        });
    QVERIFY(seen);
    QCOMPARE(probe.center()->currentWidget(), probe.settingsPage());
    QVERIFY(!QApplication::activePopupWidget());
}

void TestSideFooter::otherKeysDoNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const Qt::KeyboardModifiers none;
    QTest::newRow("a letter") << Qt::Key_L << none;
    QTest::newRow("Escape") << Qt::Key_Escape << none;
    QTest::newRow("Down") << Qt::Key_Down << none;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        const char *name = key == Qt::Key_Return ? "Return" : "Space";
        QTest::addRow("Ctrl+%s", name) << key << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::addRow("Shift+%s", name) << key << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::addRow("Alt+%s", name) << key << Qt::KeyboardModifiers(Qt::AltModifier);
    }
}

void TestSideFooter::otherKeysDoNothing()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const SettingsProbe probe;
    footerOf(probe)->setFocus();
    QCOMPARE(broughtUp([&] { QTest::keyClick(probe.window->windowHandle(), key, modifiers); }), u"nothing"_s);
    QVERIFY(probe.onMainPage());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestSideFooter::aHeldKeyOpensOneMenu_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Space") << Qt::Key_Space;
}

// The key is still down when the menu closes: what it repeats comes to the footer again.
void TestSideFooter::aHeldKeyOpensOneMenu()
{
    QFETCH(Qt::Key, key);
    const SettingsProbe probe;
    footerOf(probe)->setFocus();
    const MenuCount menus;
    QWindow *window = probe.window->windowHandle();
    const auto pressKey = [window, key](bool repeated) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, repeated);
        QApplication::sendEvent(window, &event);
    };
    QVERIFY(withMenu([&] { pressKey(false); }, [](QMenu *menu) { menu->close(); }));
    QCOMPARE(menus.shown, 1);
    QCOMPARE(probe.window->focusWidget(), footerOf(probe)); // whether or not the window is active again
    QCOMPARE(broughtUp([&] {
                 for (int i = 0; i < 3; ++i)
                     pressKey(true);
             }),
             u"nothing"_s);
    QCOMPARE(menus.shown, 1);
    QVERIFY(withMenu([&] { pressKey(false); }, [](QMenu *menu) { menu->close(); })); // the next press counts
    QCOMPARE(menus.shown, 2);
}

void TestSideFooter::tabReachesIt()
{
    SettingsProbe probe;
    QVERIFY(probe.listPeers({u"bob"_s}));
    probe.the<QWidget>(u"dmList"_s)->setFocus();
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), footerOf(probe));
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"quilloryBtn"_s);
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), footerOf(probe));
}

TIDELOFT_GUI_TEST_MAIN(TestSideFooter)
#include "tst_side_footer.moc"
