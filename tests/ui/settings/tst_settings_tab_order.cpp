// What the keyboard reaches in the settings, section by section.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/tab_order.h"
#include "tests/support/test_main.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSettingsTabOrder : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void followsReadingOrder_data();
    void followsReadingOrder();
    void arrowKeysChooseTheTheme();
};

void TestSettingsTabOrder::followsReadingOrder_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, Section section, const QStringList &expected) {
        const QString area = section == About ? u"About TideLoft"_s : QString::fromLatin1(name);
        QTest::newRow(name) << int(section)
                            << QStringList{u"Settings"_s, u"←  Back to chat"_s, area} + expected;
    };
    row("Account", Account,
        {u"Profile picture"_s, u"Display name"_s, u"Bio"_s, u"Save changes"_s, u"Username"_s, u"Bio"_s,
         u"Change"_s, u"Log out all"_s});
    row("Privacy", Privacy,
        {u"Show online status"_s, u"Show last activity"_s, u"Public profile"_s, u"Allow DMs from everyone"_s,
         u"Read receipts"_s, u"Typing indicator"_s, u"Allow friend requests"_s});
    row("Security", Security, {u"2FA enabled"_s, u"View all"_s, u"Log out"_s});
    row("Notifications", Notifications,
        {u"Enable notifications"_s, u"Sound"_s, u"Do not disturb"_s, u"Direct messages"_s, u"Groups"_s,
         u"Mentions"_s, u"Background notifications"_s, u"Start in system tray"_s});
    row("Chat", Chat,
        {u"Send with Enter"_s, u"Link previews"_s, u"Show images automatically"_s, u"Save drafts"_s,
         u"Compact mode"_s, u"24-hour format"_s, u"Show user ID"_s});
    // The themes are one stop, at the chosen one; the arrow keys lead to the others.
    row("Appearance", Appearance,
        {u"Dark"_s, u"Blue"_s, u"Violet"_s, u"Green"_s, u"Red"_s, u"Amber"_s, u"Pink"_s, u"Animations"_s,
         u"Transparency effects"_s, u"Rounded corners"_s});
    row("Advanced", Advanced,
        {u"Hardware acceleration"_s, u"Start with Windows"_s, u"Minimize to system tray"_s,
         u"Developer mode"_s, u"Clear"_s, u"Reset"_s});
    row("About", About, {});
}

void TestSettingsTabOrder::followsReadingOrder()
{
    QFETCH(int, section);
    const SettingsPageProbe probe;
    probe.clickRow(section);
    QTEST(tabOrder(probe.settingsPage(), probe.nav()), "expected");
}

void TestSettingsTabOrder::arrowKeysChooseTheTheme()
{
    const SettingsPageProbe probe;
    probe.clickRow(Appearance);
    auto *dark = buttonWith(probe.content(Appearance), u"Dark"_s);
    auto *light = buttonWith(probe.content(Appearance), u"Light"_s);
    dark->setFocus();
    QTest::keyClick(dark, Qt::Key_Right);
    QVERIFY(light->hasFocus());
    QVERIFY(light->isChecked());
    QCOMPARE(probe.window.styleSheet(), tideloft::ui::lightStyleSheet());
    QTest::keyClick(light, Qt::Key_Left);
    QVERIFY(dark->isChecked());
    QCOMPARE(probe.window.styleSheet(), tideloft::ui::darkStyleSheet());
}

TIDELOFT_GUI_TEST_MAIN(TestSettingsTabOrder)
#include "tst_settings_tab_order.moc"
