// The Appearance section alone: the themes and accents to choose from, and the marks on what was chosen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/appearance_parts.h"
#include "tests/support/settings_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestAppearanceSection : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void themeButtons_data();
    void themeButtons();
    void swatches();
    void swatchNames_data();
    void swatchNames();
    void cardRows();
};

void TestAppearanceSection::themeButtons_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << Language::English << themes;
    QTest::newRow("Swedish") << Language::Swedish << QStringList{u"Mörkt"_s, u"Ljust"_s, u"System"_s};
}

void TestAppearanceSection::themeButtons()
{
    QFETCH(Language, language);
    const SettingsPageProbe page(language);
    const AppearanceParts section(page);
    QStringList texts;
    for (const QPushButton *button : section.buttons(0)) {
        texts.append(button->text());
        QVERIFY(button->isCheckable());
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    }
    QTEST(texts, "expected");
    QCOMPARE(section.markedThemes(), QList<int>{0});
    QVERIFY(section.buttons(0).at(0)->isChecked());
    QVERIFY(!section.buttons(0).at(1)->isChecked());
    QVERIFY(!section.buttons(0).at(2)->isChecked());
}

void TestAppearanceSection::swatches()
{
    const SettingsPageProbe page;
    const AppearanceParts section(page);
    QStringList kept;
    for (const QPushButton *swatch : section.buttons(1)) {
        kept.append(swatch->property("accentColor").toString());
        QCOMPARE(swatch->minimumSize(), QSize(28, 28));
        QCOMPARE(swatch->maximumSize(), QSize(28, 28));
        QCOMPARE(swatch->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(swatch->text(), QString());
    }
    QCOMPARE(kept, colours);
    QCOMPARE(section.markedSwatches(), QList<int>{0});
}

void TestAppearanceSection::swatchNames_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << Language::English << QStringList{u"Blue"_s, u"Violet"_s, u"Green"_s,
                                                                 u"Red"_s,  u"Amber"_s,  u"Pink"_s};
    QTest::newRow("Swedish") << Language::Swedish
                             << QStringList{u"Blå"_s, u"Violett"_s, u"Grön"_s, u"Röd"_s, u"Gul"_s, u"Rosa"_s};
}

void TestAppearanceSection::swatchNames()
{
    QFETCH(Language, language);
    const SettingsPageProbe page(language);
    const AppearanceParts section(page);
    QStringList names;
    for (const QPushButton *swatch : section.buttons(1))
        names.append(swatch->accessibleName());
    QTEST(names, "expected");
}

void TestAppearanceSection::cardRows()
{
    const SettingsPageProbe page;
    const AppearanceParts section(page);
    for (int card = 0; card < 2; ++card) {
        const QLayout *line = section.card(card)->layout()->itemAt(0)->layout();
        QCOMPARE(line->contentsMargins(), QMargins(16, 12, 16, 12));
        QCOMPARE(line->spacing(), card == 0 ? 12 : 10);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestAppearanceSection)
#include "tst_appearance_section.moc"
