// The ways into the settings and out of them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestSettingsOpening : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void openingMarksTheRail();
    void aboutNamesTheService();
    void opensOverAConversation();
    void openedTwiceIsOnePage();
    void everyOpeningFadesThePage();
    void visibleAfterTheFade();
    void backWithoutConversation();
    void backToTheOpenConversation();
    void laterLanguageDoesNotTranslate();
    void sectionsDoNotFade();
    void animationsSwitchLeavesTheFade();
    void slotsFadeTheBuiltPage_data();
    void slotsFadeTheBuiltPage();
    void userMenuOpensWithoutFade_data();
    void userMenuOpensWithoutFade();
    void switchesAreNotThoseOfThePrivacyDialog();
};

namespace
{

QImage screenOf(const SettingsProbe &probe)
{
    return probe.window->screen()->grabWindow(probe.window->winId()).toImage();
}

QRect placeIn(const SettingsProbe &probe, const QWidget *widget)
{
    return {widget->mapTo(probe.window.get(), QPoint(0, 0)), widget->size()};
}

bool has(const QImage &image, const QColor &colour)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == colour)
                return true;
        }
    }
    return false;
}

} // namespace

void TestSettingsOpening::openingMarksTheRail()
{
    const SettingsProbe probe;
    QVERIFY(probe.messagesButton()->isChecked());
    QVERIFY(!probe.settingsPage());
    probe.openSettings();
    QVERIFY(probe.settingsButton()->isChecked());
    QVERIFY(!probe.messagesButton()->isChecked());
    QCOMPARE(probe.center()->currentWidget(), probe.settingsPage());
    probe.openSettings(); // a checkable button would give its mark away
    QVERIFY(probe.settingsButton()->isChecked());
    QVERIFY(!probe.messagesButton()->isChecked());
}

void TestSettingsOpening::aboutNamesTheService()
{
    const SettingsProbe probe;
    setServiceBaseUrl(u"http://localhost:1"_s);
    probe.openSettings();
    QVERIFY(labelWith(probe.content(About), u"TideLoft service (localhost:1)"_s));
}

void TestSettingsOpening::opensOverAConversation()
{
    SettingsProbe probe;
    QVERIFY(probe.open(u"bob"_s));
    probe.openSettings();
    QCOMPARE(probe.center()->currentWidget(), probe.settingsPage());
    probe.clickPeer(u"bob"_s);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    // Who opens a conversation meanwhile leaves the rail as it was.
    QVERIFY(probe.settingsButton()->isChecked());
    QVERIFY(!probe.messagesButton()->isChecked());
}

void TestSettingsOpening::openedTwiceIsOnePage()
{
    const SettingsProbe probe;
    probe.openSettings();
    const QPointer<QWidget> page = probe.settingsPage();
    const int pages = probe.center()->count();
    probe.clickRow(Notifications);
    auto *button = probe.row(Notifications, u"Do not disturb"_s)->findChild<QPushButton *>();
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    probe.openSettings();
    QCOMPARE(probe.settingsPage(), page.data());
    QCOMPARE(probe.center()->count(), pages);
    QCOMPARE(probe.nav()->currentRow(), int(Notifications));
    QCOMPARE(probe.sections()->currentIndex(), int(Notifications));
    QVERIFY(button->isChecked());
}

void TestSettingsOpening::everyOpeningFadesThePage()
{
    const SettingsProbe probe;
    probe.openSettings();
    const QPointer<QGraphicsEffect> first = probe.settingsPage()->graphicsEffect();
    QVERIFY(qobject_cast<QGraphicsOpacityEffect *>(first));
    QVERIFY(probe.fadedIn());
    QCOMPARE(static_cast<QGraphicsOpacityEffect *>(first.data())->opacity(), 1.0);
    probe.openSettings();
    QVERIFY(!first);
    QVERIFY(probe.settingsPage()->graphicsEffect()->isEnabled());
    QVERIFY(probe.fadedIn());
}

// Looks at the screen: a picture drawn on demand would not show what was left out of the fade.
void TestSettingsOpening::visibleAfterTheFade()
{
    const SettingsProbe probe;
    const QImage before = screenOf(probe);
    probe.openSettings();
    QVERIFY(probe.fadedIn());
    const QRect title = placeIn(probe, labelWith(probe.content(Account), u"Account"_s));
    const QRect page = placeIn(probe, probe.sections());
    QTRY_VERIFY(has(screenOf(probe).copy(title), QColor(0xe8, 0xf0, 0xf8)));
    const QImage after = screenOf(probe);
    QVERIFY(!has(before.copy(title), QColor(0xe8, 0xf0, 0xf8)));
    QVERIFY(before.copy(page) != after.copy(page));
    QCOMPARE(after.copy(page), probe.window->grab(page).toImage().convertToFormat(after.format()));
}

void TestSettingsOpening::backWithoutConversation()
{
    const SettingsProbe probe;
    probe.openSettings();
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QVERIFY(probe.messagesButton()->isChecked());
    QVERIFY(!probe.settingsButton()->isChecked());
}

void TestSettingsOpening::backToTheOpenConversation()
{
    SettingsProbe probe;
    QVERIFY(probe.open(u"bob"_s));
    probe.openSettings();
    probe.service.clear();
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
    QVERIFY(probe.messagesButton()->isChecked());
    QVERIFY(!probe.settingsButton()->isChecked());
    QVERIFY(probe.the<QWidget>(u"msgInput"_s)->hasFocus());
}

void TestSettingsOpening::laterLanguageDoesNotTranslate()
{
    const SettingsProbe probe(Language::English);
    probe.openSettings();
    const QStringList texts = labelTexts(probe.settingsPage());
    probe.choose(Language::Swedish);
    QCOMPARE(probe.the<QLabel>(u"sidebarTitle"_s)->text(), u"Meddelanden"_s);
    probe.openSettings();
    QCOMPARE(labelTexts(probe.settingsPage()), texts);
    QCOMPARE(probe.nav()->item(0)->text(), u"👤  Account"_s);
    QCOMPARE(probe.backButton()->text(), u"←  Back to chat"_s);
    QVERIFY(buttonWith(probe.content(Appearance), u"Dark"_s));
}

void TestSettingsOpening::sectionsDoNotFade()
{
    const SettingsProbe probe;
    probe.openSettings();
    QVERIFY(probe.fadedIn());
    const QGraphicsEffect *ofPage = probe.settingsPage()->graphicsEffect();
    for (int i = Account; i <= About; ++i) {
        probe.clickRow(i);
        QVERIFY(!probe.section(i)->graphicsEffect());
        QVERIFY(!probe.sections()->graphicsEffect());
        QCOMPARE(probe.settingsPage()->graphicsEffect(), ofPage);
        QVERIFY(!ofPage->isEnabled());
    }
}

void TestSettingsOpening::animationsSwitchLeavesTheFade()
{
    const SettingsProbe probe;
    probe.openSettings();
    probe.clickRow(Appearance);
    QTest::mouseClick(probe.row(Appearance, u"Animations"_s)->findChild<QPushButton *>(), Qt::LeftButton);
    const QPointer<QGraphicsEffect> former = probe.settingsPage()->graphicsEffect();
    probe.openSettings();
    QVERIFY(!former);
    QVERIFY(probe.settingsPage()->graphicsEffect()->isEnabled());
    QVERIFY(probe.fadedIn());
}

void TestSettingsOpening::slotsFadeTheBuiltPage_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("section");
    QTest::newRow("view") << QByteArray("showSettingsView") << QString();
    QTest::newRow("section privacy") << QByteArray("showSettingsSection") << u"privacy"_s;
    QTest::newRow("section unknown") << QByteArray("showSettingsSection") << u"no such section"_s;
}

void TestSettingsOpening::slotsFadeTheBuiltPage()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, section);
    const SettingsProbe probe;
    probe.openSettings();
    probe.clickRow(Chat);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QVERIFY(probe.fadedIn());
    const bool called = section.isNull() ? callSlot(*probe.window, slot)
                                         : callSlot(*probe.window, slot, Q_ARG(QString, section));
    QVERIFY(called);
    QCOMPARE(probe.center()->currentWidget(), probe.settingsPage());
    QVERIFY(probe.settingsPage()->graphicsEffect()->isEnabled());
    QVERIFY(probe.fadedIn());
    QCOMPARE(probe.nav()->currentRow(), int(Chat)); // the section that was asked for does not count
    QVERIFY(probe.messagesButton()->isChecked());   // and the rail is not touched
    QVERIFY(!probe.settingsButton()->isChecked());
}

void TestSettingsOpening::userMenuOpensWithoutFade_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("expectedRow");
    QTest::newRow("Profile goes to the account") << 0 << int(Account);
    QTest::newRow("Settings keeps the row") << 1 << int(Advanced);
}

void TestSettingsOpening::userMenuOpensWithoutFade()
{
    QFETCH(int, entry);
    const SettingsProbe probe;
    QVERIFY(takeFromUserMenu(probe, entry)); // builds the page
    QCOMPARE(probe.center()->currentWidget(), probe.settingsPage());
    QVERIFY(!probe.settingsPage()->graphicsEffect());
    QCOMPARE(probe.nav()->currentRow(), 0);
    QVERIFY(probe.settingsButton()->isChecked());
    QVERIFY(!probe.messagesButton()->isChecked());
    probe.clickRow(Advanced);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QVERIFY(takeFromUserMenu(probe, entry));
    QCOMPARE(probe.center()->currentWidget(), probe.settingsPage());
    QVERIFY(!probe.settingsPage()->graphicsEffect());
    QTEST(probe.nav()->currentRow(), "expectedRow");
}

// The dialog that the footer's button opens has check boxes of the same names as switches of the settings.
void TestSettingsOpening::switchesAreNotThoseOfThePrivacyDialog()
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

TIDELOFT_GUI_TEST_MAIN(TestSettingsOpening)
#include "tst_settings_opening.moc"
