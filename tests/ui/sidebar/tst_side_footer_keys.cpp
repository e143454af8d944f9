// The sidebar's footer under the keyboard: what its keys do, and how one gets there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/popups.h"
#include "tests/support/sidebar_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSideFooterKeys : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
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

} // namespace

void TestSideFooterKeys::keysOpenTheMenu_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
    QTest::newRow("keypad Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Space") << Qt::Key_Space << Qt::KeyboardModifiers();
}

void TestSideFooterKeys::keysOpenTheMenu()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const SidebarPageProbe probe;
    probe.footer->setFocus();
    const bool seen = withMenu(
        [&] { probe.pressKey(key, modifiers); },
        [footer = probe.footer](QMenu *menu) {
            QCOMPARE(entriesOf(menu), (QStringList{u"Profile"_s, u"Settings"_s, u"-"_s, u"Log out"_s}));
            QCOMPARE(menu->y() + menu->height() + 4, footer->mapToGlobal(QPoint(0, 0)).y());
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return); // the choice opens no second menu
        });
    QVERIFY(seen);
    QCOMPARE(probe.profiles.size(), 1);
    QCOMPARE(probe.sentSignals(), 1);
    QVERIFY(!QApplication::activePopupWidget());
}

void TestSideFooterKeys::otherKeysDoNothing_data()
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

void TestSideFooterKeys::otherKeysDoNothing()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const SidebarPageProbe probe;
    probe.footer->setFocus();
    QCOMPARE(broughtUp([&] { probe.pressKey(key, modifiers); }), u"nothing"_s);
    QCOMPARE(probe.sentSignals(), 0);
}

void TestSideFooterKeys::aHeldKeyOpensOneMenu_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Space") << Qt::Key_Space;
}

// The key is still down when the menu closes: what it repeats comes to the footer again.
void TestSideFooterKeys::aHeldKeyOpensOneMenu()
{
    QFETCH(Qt::Key, key);
    const SidebarPageProbe probe;
    probe.footer->setFocus();
    const MenuCount menus;
    QWindow *window = probe.window.windowHandle();
    const auto pressKey = [window, key](bool repeated) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, repeated);
        QApplication::sendEvent(window, &event);
    };
    QVERIFY(withMenu([&] { pressKey(false); }, [](QMenu *menu) { menu->close(); }));
    QCOMPARE(menus.shown, 1);
    QCOMPARE(probe.window.focusWidget(), probe.footer); // whether or not the window is active again
    QCOMPARE(broughtUp([&] {
                 for (int i = 0; i < 3; ++i)
                     pressKey(true);
             }),
             u"nothing"_s);
    QCOMPARE(menus.shown, 1);
    QVERIFY(withMenu([&] { pressKey(false); }, [](QMenu *menu) { menu->close(); })); // the next press counts
    QCOMPARE(menus.shown, 2);
}

void TestSideFooterKeys::tabReachesIt()
{
    const SidebarPageProbe probe;
    probe.listPeers({u"bob"_s});
    probe.the<QWidget>(u"dmList"_s)->setFocus();
    probe.pressKey(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), probe.footer);
    probe.pressKey(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"quilloryBtn"_s);
    probe.pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), probe.footer);
}

TIDELOFT_GUI_TEST_MAIN(TestSideFooterKeys)
#include "tst_side_footer_keys.moc"
