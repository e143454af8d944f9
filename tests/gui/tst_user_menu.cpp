// The menu of the sidebar's footer: its entries, its place, and what each entry does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QGraphicsEffect>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestUserMenu : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void entriesInTheirOrder_data();
    void entriesInTheirOrder();
    void textsFollowTheLanguageOfTheMoment();
    void standsAboveTheFooter();
    void entriesOpenTheSettings_data();
    void entriesOpenTheSettings();
    void entriesActWithoutAClick_data();
    void entriesActWithoutAClick();
    void anOldFadeIsLeftAlone_data();
    void anOldFadeIsLeftAlone();
    void closedWithoutAChoiceDoesNothing_data();
    void closedWithoutAChoiceDoesNothing();
    void logOutEndsTheSignIn_data();
    void logOutEndsTheSignIn();
    void logOutSendsNothing();
    void logOutLeavesTheMainPage();
};

namespace
{

enum Entry { Profile, Settings, Separator, LogOut };

} // namespace

void TestUserMenu::entriesInTheirOrder_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("English") << Language::English
                             << QStringList{u"Profile"_s, u"Settings"_s, u"-"_s, u"Log out"_s};
    QTest::newRow("Swedish") << Language::Swedish
                             << QStringList{u"Profil"_s, u"Inställningar"_s, u"-"_s, u"Logga ut"_s};
}

void TestUserMenu::entriesInTheirOrder()
{
    QFETCH(Language, language);
    const SettingsProbe probe(language);
    const bool seen = withUserMenu(probe, [&probe](const QMenu *menu) {
        QTEST(entriesOf(menu), "entries");
        QCOMPARE(menu->objectName(), u"userMenu"_s);
        QCOMPARE(menu->parentWidget(), probe.window.get());
        QCOMPARE(menu->styleSheet(), QString()); // dressed by the window's sheet
        for (const QAction *action : menu->actions())
            QVERIFY(action->isEnabled() && !action->isCheckable() && !action->menu());
    });
    QVERIFY(seen);
}

void TestUserMenu::textsFollowTheLanguageOfTheMoment()
{
    const SettingsProbe probe(Language::English);
    probe.choose(Language::Swedish);
    const bool seen =
        withUserMenu(probe, [](const QMenu *menu) { QCOMPARE(entriesOf(menu).constLast(), u"Logga ut"_s); });
    QVERIFY(seen);
}

void TestUserMenu::standsAboveTheFooter()
{
    const SettingsProbe probe;
    const auto *footer = probe.the<QWidget>(u"sideFooter"_s);
    const bool seen = withUserMenu(probe, [footer](const QMenu *menu) {
        QCOMPARE(menu->size(), menu->sizeHint());
        const QPoint corner = footer->mapToGlobal(QPoint(0, 0));
        QCOMPARE(menu->x(), corner.x());
        QCOMPARE(menu->y() + menu->height() + 4, corner.y());
    });
    QVERIFY(seen);
}

void TestUserMenu::entriesOpenTheSettings_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("expectedRow");
    QTest::newRow("Profile goes to the account") << int(Profile) << int(Account);
    QTest::newRow("Settings keeps the section") << int(Settings) << int(Chat);
}

void TestUserMenu::entriesOpenTheSettings()
{
    QFETCH(int, entry);
    QFETCH(int, expectedRow);
    SettingsProbe probe;
    probe.service.clear();
    QVERIFY(!probe.settingsPage());
    QVERIFY(takeFromUserMenu(probe, Entry(entry))); // builds the page
    const QPointer<QWidget> page = probe.settingsPage();
    QVERIFY(page);
    QCOMPARE(probe.center()->currentWidget(), page);
    QCOMPARE(probe.nav()->currentRow(), int(Account));
    probe.clickRow(Chat);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QVERIFY(probe.messagesButton()->isChecked());
    QVERIFY(takeFromUserMenu(probe, Entry(entry)));
    QCOMPARE(probe.settingsPage(), page);
    QCOMPARE(probe.center()->currentWidget(), page);
    QCOMPARE(probe.nav()->currentRow(), expectedRow);
    QCOMPARE(probe.sections()->currentIndex(), expectedRow);
    QVERIFY(probe.settingsButton()->isChecked());
    QVERIFY(!probe.messagesButton()->isChecked());
    QVERIFY(!page->graphicsEffect()); // it never fades
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
}

void TestUserMenu::entriesActWithoutAClick_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<bool>("byAssistant");
    QTest::addColumn<QString>("expected");
    for (const bool byAssistant : {false, true}) {
        const char *way = byAssistant ? "pressed by an assistive program" : "triggered";
        QTest::addRow("Profile, %s", way) << int(Profile) << byAssistant << u"section 0"_s;
        QTest::addRow("Settings, %s", way) << int(Settings) << byAssistant << u"section 4"_s;
        QTest::addRow("Log out, %s", way) << int(LogOut) << byAssistant << u"signed out"_s;
    }
}

void TestUserMenu::entriesActWithoutAClick()
{
    QFETCH(int, entry);
    QFETCH(bool, byAssistant);
    const SettingsProbe probe;
    probe.openSettings();
    probe.clickRow(Chat);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    bool wasClosed = false;
    QVERIFY(withUserMenu(probe, [&](QMenu *menu) {
        if (byAssistant)
            pressAsAssistant(menu, entry);
        else
            menu->actions().at(entry)->trigger();
        wasClosed = !menu->isVisible();
        QCOMPARE(probe.centerPage(), u"emptyState"_s); // nothing happens inside the call
        QVERIFY(probe.onMainPage());
    }));
    QVERIFY(wasClosed);
    const bool shown = probe.center()->currentWidget() == probe.settingsPage();
    const QString found = !probe.onMainPage() ? u"signed out"_s
                          : shown             ? u"section %1"_s.arg(probe.nav()->currentRow())
                                              : u"nothing"_s;
    QTEST(found, "expected");
}

void TestUserMenu::anOldFadeIsLeftAlone_data()
{
    QTest::addColumn<int>("entry");
    QTest::newRow("Profile") << int(Profile);
    QTest::newRow("Settings") << int(Settings);
}

void TestUserMenu::anOldFadeIsLeftAlone()
{
    QFETCH(int, entry);
    const SettingsProbe probe;
    probe.openSettings();
    QVERIFY(probe.fadedIn());
    const QPointer<QGraphicsEffect> fade = probe.settingsPage()->graphicsEffect();
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QVERIFY(takeFromUserMenu(probe, Entry(entry)));
    QVERIFY(fade);
    QCOMPARE(probe.settingsPage()->graphicsEffect(), fade);
    QVERIFY(!fade->isEnabled()); // over long since, and not begun again
}

void TestUserMenu::closedWithoutAChoiceDoesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("a click elsewhere") << false;
}

void TestUserMenu::closedWithoutAChoiceDoesNothing()
{
    QFETCH(bool, byKey);
    const SettingsProbe probe;
    const bool seen = withUserMenu(probe, [byKey, &probe](QMenu *menu) {
        if (byKey)
            QTest::keyClick(menu, Qt::Key_Escape);
        else
            QTest::mouseClick(probe.window->windowHandle(), Qt::LeftButton, {}, QPoint(600, 300));
        QVERIFY(!menu->isVisible());
    });
    QVERIFY(seen);
    QVERIFY(probe.onMainPage());
    QVERIFY(!probe.settingsPage());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QVERIFY(probe.messagesButton()->isChecked());
    QVERIFY(!probe.window->findChild<QMenu *>(u"userMenu"_s)); // and the menu is gone
}

void TestUserMenu::logOutEndsTheSignIn_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("keyboard") << false;
}

void TestUserMenu::logOutEndsTheSignIn()
{
    QFETCH(bool, byMouse);
    const SettingsProbe probe;
    probe.refreshTimer()->start();
    QCOMPARE(probe.username()->text(), u"alice"_s);
    QVERIFY(!probe.password()->text().isEmpty());
    QVERIFY(withUserMenu(probe, [byMouse](QMenu *menu) {
        if (byMouse) {
            clickEntry(menu, LogOut);
            return;
        }
        QTest::keyClick(menu, Qt::Key_Up); // the last one
        QTest::keyClick(menu, Qt::Key_Return);
    }));
    QCOMPARE(probe.root()->currentIndex(), 0);
    QVERIFY(!probe.refreshTimer()->isActive());
    QCOMPARE(probe.username()->text(), QString());
    QCOMPARE(probe.password()->text(), QString());
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
    QVERIFY(probe.username()->isEnabled());
    QCOMPARE(probe.window->focusWidget(), probe.username()); // as soon as the window is active again
    const auto *signIn = probe.the<QPushButton>(u"primaryButton"_s);
    QVERIFY(signIn->isEnabled());
    QCOMPARE(signIn->text(), u"Sign in"_s);
}

void TestUserMenu::logOutSendsNothing()
{
    SettingsProbe probe;
    probe.service.clear();
    QVERIFY(takeFromUserMenu(probe, LogOut));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
}

void TestUserMenu::logOutLeavesTheMainPage()
{
    SettingsProbe probe;
    QVERIFY(probe.open(u"bob"_s));
    QVERIFY(takeFromUserMenu(probe, LogOut));
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
    QCOMPARE(probe.the<QListWidget>(u"dmList"_s)->count(), 1);
    QCOMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"alice"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestUserMenu)
#include "tst_user_menu.moc"
