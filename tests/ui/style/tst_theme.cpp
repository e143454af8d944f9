// The style sheet of every theme and accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/style_sheets.h"
#include "ui/style/theme.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestTheme : public QObject
{
    Q_OBJECT

private slots:
    void darkIsTheBeginning();
    void theSheetIsThatOfTheThemeInItsAccent_data();
    void theSheetIsThatOfTheThemeInItsAccent();
};

void TestTheme::darkIsTheBeginning()
{
    QCOMPARE(Theme().accent, u"#3b8beb"_s);
    QCOMPARE(Theme().styleSheet(), darkStyleSheet());
}

void TestTheme::theSheetIsThatOfTheThemeInItsAccent_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QString>("accent");
    for (const QStringView accent : swatchColours) {
        QTest::addRow("dark %s", qPrintable(accent.toString())) << true << accent.toString();
        QTest::addRow("light %s", qPrintable(accent.toString())) << false << accent.toString();
    }
}

void TestTheme::theSheetIsThatOfTheThemeInItsAccent()
{
    QFETCH(const bool, isDark);
    QFETCH(const QString, accent);
    const QString sheet = Theme{isDark, accent}.styleSheet();
    QCOMPARE(sheet, withAccent(isDark ? darkStyleSheet() : lightStyleSheet(), accent));
    QCOMPARE(sheet.contains(defaultAccent), accent == defaultAccent);
}

TIDELOFT_TEST_MAIN(TestTheme)
#include "tst_theme.moc"
