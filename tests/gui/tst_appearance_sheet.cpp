// The style sheet that a choice of theme and accent gives the window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_appearance_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestAppearanceSheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase() { probe.reset(); }
    void themeChoice_data();
    void themeChoice();
    void accentChoice_data();
    void accentChoice();
    void themeAndAccent_data();
    void themeAndAccent();
    void lightThenAccentThenDarkKeepsTheAccent();
    void defaultAccentRestoresTheGradients();
    void byKeyboard();

private:
    std::unique_ptr<AppearanceProbe> probe;
};

// One window for all: every test chooses what the one before may have left otherwise.
void TestAppearanceSheet::initTestCase()
{
    placeKeyPair();
    probe = std::make_unique<AppearanceProbe>();
    QCOMPARE(probe->sheet(), expectedSheet(true, colours.first()));
}

void TestAppearanceSheet::init()
{
    failOnToolkitWarnings();
    probe->chooseTheme(0);
    probe->chooseAccent(colours.first());
    QCOMPARE(probe->sheet(), expectedSheet(true, colours.first()));
}

void TestAppearanceSheet::themeChoice_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("dark");
    QTest::newRow("Dark") << 0 << true;
    QTest::newRow("Light") << 1 << false;
    QTest::newRow("System means dark") << 2 << true;
}

void TestAppearanceSheet::themeChoice()
{
    QFETCH(int, index);
    QFETCH(bool, dark);
    probe->chooseTheme(dark ? 1 : 0); // the other one first, so that something has to change
    QCOMPARE(probe->sheet(), expectedSheet(!dark, colours.first()));
    probe->chooseTheme(index);
    QCOMPARE(probe->sheet(), expectedSheet(dark, colours.first()));
    QCOMPARE(probe->markedThemes(), QList<int>{index});
    probe->chooseTheme(index);
    QCOMPARE(probe->sheet(), expectedSheet(dark, colours.first()));
    QCOMPARE(probe->markedThemes(), QList<int>{index});
    QCOMPARE(probe->markedSwatches(), QList<int>{0});
}

void TestAppearanceSheet::accentChoice_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < colours.size(); ++i)
        QTest::newRow(qPrintable(colours.at(i))) << i;
}

void TestAppearanceSheet::accentChoice()
{
    QFETCH(int, index);
    probe->chooseAccent(colours.at(index == 0 ? 1 : 0));
    probe->chooseAccent(colours.at(index));
    QCOMPARE(probe->markedSwatches(), QList<int>{index});
    QCOMPARE(probe->markedThemes(), QList<int>{0});
    QCOMPARE(probe->sheet(), expectedSheet(true, colours.at(index)));
}

void TestAppearanceSheet::themeAndAccent_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("accent");
    for (int theme = 0; theme < themes.size(); ++theme) {
        for (const QString &colour : colours)
            QTest::addRow("%s %s", qPrintable(themes.at(theme)), qPrintable(colour)) << theme << colour;
    }
}

// Either may come first.
void TestAppearanceSheet::themeAndAccent()
{
    QFETCH(int, theme);
    QFETCH(QString, accent);
    const QString expected = expectedSheet(theme != 1, accent);
    probe->chooseTheme(theme);
    probe->chooseAccent(accent);
    QCOMPARE(probe->sheet(), expected);
    probe->chooseTheme(theme == 1 ? 0 : 1);
    QCOMPARE(probe->sheet(), expectedSheet(theme == 1, accent));
    probe->chooseTheme(theme);
    QCOMPARE(probe->sheet(), expected);
    QCOMPARE(probe->markedThemes(), QList<int>{theme});
    QCOMPARE(probe->markedSwatches(), QList<int>{int(colours.indexOf(accent))});
}

void TestAppearanceSheet::lightThenAccentThenDarkKeepsTheAccent()
{
    probe->chooseTheme(1);
    probe->chooseAccent(u"#e05454"_s);
    QVERIFY(!probe->sheet().contains(u"#3b8beb"_s));
    QVERIFY(!probe->sheet().contains(u"#2563eb"_s));
    QCOMPARE(probe->sheet().count(u"#e05454"_s), expectedSheet(false, u"#e05454"_s).count(u"#e05454"_s));
    probe->chooseTheme(0);
    QCOMPARE(probe->sheet(), expectedSheet(true, u"#e05454"_s));
}

void TestAppearanceSheet::defaultAccentRestoresTheGradients()
{
    probe->chooseAccent(u"#ec4899"_s);
    QVERIFY(!probe->sheet().contains(u"#2563eb"_s));
    probe->chooseAccent(u"#3b8beb"_s);
    QCOMPARE(probe->sheet(), tideloft::ui::darkStyleSheet());
    QVERIFY(probe->sheet().contains(u"#2563eb"_s));
}

void TestAppearanceSheet::byKeyboard()
{
    probe->buttons(0).at(1)->setFocus();
    QTest::keyClick(probe->buttons(0).at(1), Qt::Key_Space);
    QCOMPARE(probe->sheet(), expectedSheet(false, colours.first()));
    probe->buttons(1).at(4)->setFocus();
    QTest::keyClick(probe->buttons(1).at(4), Qt::Key_Space);
    QCOMPARE(probe->sheet(), expectedSheet(false, u"#f59e0b"_s));
}

TIDELOFT_GUI_TEST_MAIN(TestAppearanceSheet)
#include "tst_appearance_sheet.moc"
