// The settings' navigation: its rows, its look, and how it shows the sections.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestSettingsPage : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void rows_data();
    void rows();
    void everyRowShowsItsSectionAtOnce();
    void rowsByKeyboard();
    void firstRowIsCurrentAfterBuilding();
    void captionAndBackButton_data();
    void captionAndBackButton();
    void theBackButtonIsHeard();
    void styles();
    void noStrayLines();
    void layout();
};

void TestSettingsPage::rows_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << Language::English
                             << QStringList{u"👤  Account"_s,     u"🔒  Privacy"_s,
                                            u"🛡  Security"_s, u"🔔  Notifications"_s,
                                            u"💬  Chat"_s,        u"🎨  Appearance"_s,
                                            u"⚙  Advanced"_s,    u"ℹ️  About TideLoft"_s};
    QTest::newRow("Swedish") << Language::Swedish
                             << QStringList{u"👤  Konto"_s,     u"🔒  Privacy"_s,         u"🛡  Säkerhet"_s,
                                            u"🔔  Notiser"_s,   u"💬  Chatt"_s,           u"🎨  Utseende"_s,
                                            u"⚙  Avancerat"_s, u"ℹ️  Om TideLoft"_s};
}

void TestSettingsPage::rows()
{
    QFETCH(Language, language);
    const SettingsPageProbe probe(language);
    QStringList texts;
    for (int i = 0; i < probe.nav()->count(); ++i)
        texts.append(probe.nav()->item(i)->text());
    QTEST(texts, "expected");
    QCOMPARE(probe.sections()->count(), 8);
    // All sections but the last begin with their name.
    for (int i = 0; i < About; ++i)
        QCOMPARE(probe.outline(i).constFirst(), texts.at(i).section(u"  "_s, 1));
    QCOMPARE(labelTexts(probe.content(About)).constFirst(), u"TL"_s);
}

void TestSettingsPage::everyRowShowsItsSectionAtOnce()
{
    const SettingsPageProbe probe;
    for (int i = probe.nav()->count() - 1; i >= 0; --i) {
        probe.clickRow(i);
        QCOMPARE(probe.nav()->currentRow(), i);
        QCOMPARE(probe.sections()->currentIndex(), i);
        QVERIFY(probe.section(i)->isVisible());
    }
}

void TestSettingsPage::rowsByKeyboard()
{
    const SettingsPageProbe probe;
    probe.nav()->setFocus();
    for (int i = 1; i < probe.nav()->count(); ++i) {
        QTest::keyClick(probe.nav(), Qt::Key_Down);
        QCOMPARE(probe.sections()->currentIndex(), i);
    }
}

void TestSettingsPage::firstRowIsCurrentAfterBuilding()
{
    const SettingsPageProbe probe;
    QCOMPARE(probe.nav()->currentRow(), 0);
    QVERIFY(probe.nav()->item(0)->isSelected());
    QCOMPARE(probe.sections()->currentIndex(), 0);
}

void TestSettingsPage::captionAndBackButton_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("back");
    QTest::newRow("English") << Language::English << u"Settings"_s << u"←  Back to chat"_s;
    QTest::newRow("Swedish") << Language::Swedish << u"Inställningar"_s << u"←  Tillbaka till chatten"_s;
}

void TestSettingsPage::captionAndBackButton()
{
    QFETCH(Language, language);
    const SettingsPageProbe probe(language);
    QFETCH(QString, caption);
    QCOMPARE(labelTexts(probe.the<QWidget>(u"settingsNav"_s)), QStringList{caption});
    QTEST(probe.backButton()->text(), "back");
    QCOMPARE(probe.backButton()->cursor().shape(), Qt::PointingHandCursor);
}

void TestSettingsPage::theBackButtonIsHeard()
{
    const SettingsPageProbe probe;
    QCOMPARE(probe.window.sentSignals(), 0);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    QCOMPARE(probe.window.sentSignals(), 1);
}

void TestSettingsPage::styles()
{
    const SettingsPageProbe probe;
    auto *nav = probe.the<QWidget>(u"settingsNav"_s);
    QCOMPARE(probe.settingsPage()->styleSheet(), u"background: #0f1923;"_s);
    QCOMPARE(probe.sections()->styleSheet(), u"background: #0f1923;"_s);
    QCOMPARE(nav->styleSheet(), u"background: #0c151e; border-right: 1px solid #141f2b;"_s);
    QCOMPARE(labelWith(nav, u"Settings"_s)->styleSheet(),
             u"color: #5a7a9a; font-size: 11px; font-weight: 700; letter-spacing: 1px; "
             "padding: 0 8px 8px; background: transparent;"_s);
    QCOMPARE(probe.nav()->styleSheet(),
             u"QListWidget { background: transparent; border: none; }"
             "QListWidget::item { padding: 10px 12px; border-radius: 6px; color: #7a9ab8; font-size: 13px; }"
             "QListWidget::item:hover { background: #151f2a; color: #e8f0f8; }"
             "QListWidget::item:selected { background: #1a2e40; color: #fff; font-weight: 600; }"_s);
    QCOMPARE(probe.backButton()->styleSheet(),
             u"background: transparent; color: #5a7a9a; border: none; font-size: 12px; text-align: left; "
             "padding: 8px 12px;"_s);
}

void TestSettingsPage::noStrayLines()
{
    const SettingsPageProbe probe;
    auto *nav = probe.the<QWidget>(u"settingsNav"_s);
    const auto *caption = labelWith(nav, u"Settings"_s);
    const QImage picture = nav->grab().toImage();
    const QPoint end = caption->mapTo(nav, caption->rect().topRight());
    for (int y = 0; y < caption->height(); ++y)
        QCOMPARE(picture.pixelColor(end + QPoint(0, y)), QColor(0x0c151e));
    probe.clickRow(Security);
    QVERIFY(probe.nav()->hasFocus());
    const QImage with = probe.nav()->grab().toImage();
    probe.nav()->clearFocus();
    QCOMPARE(probe.nav()->grab().toImage(), with);
}

void TestSettingsPage::layout()
{
    const SettingsPageProbe probe;
    auto *nav = probe.the<QWidget>(u"settingsNav"_s);
    QCOMPARE(itemsOf(probe.settingsPage()), u"#settingsNav QStackedWidget*1"_s);
    QCOMPARE(itemsOf(nav), u"QWidget QListWidget*1 QPushButton(←  Back to chat)"_s);
    QVERIFY(nav->geometry().right() < probe.sections()->geometry().left());
    for (int i = Account; i <= About; ++i) {
        QVERIFY(probe.section(i)->widgetResizable());
        QVERIFY(probe.content(i));
    }
}

TIDELOFT_GUI_TEST_MAIN(TestSettingsPage)
#include "tst_settings_page.moc"
