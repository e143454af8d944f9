// Both style sheets: their whole texts against those in sheets/, and rule by rule against a table.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "tests/ui/style/tst_style_sheets_table.h"
#include "ui/style/accent.h"
#include "ui/style/style_sheets.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using namespace tideloft::tests;

namespace
{

using Declarations = QMap<QString, QString>;
using Rules = QMap<QString, Declarations>;

void readDeclarations(const QString &text, Declarations &into)
{
    for (const QString &part : text.split(u';')) {
        const auto colon = part.indexOf(u':');
        if (colon > 0)
            into.insert(part.left(colon).simplified(), part.mid(colon + 1).simplified());
    }
}

Rules readSheet(QString sheet)
{
    static const QRegularExpression comment(u"/\\*.*?\\*/"_s, QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression rule(u"([^{}]+)\\{([^{}]*)\\}"_s);
    sheet.remove(comment);
    Rules rules;
    auto matches = rule.globalMatch(sheet);
    while (matches.hasNext()) {
        const auto match = matches.next();
        for (const QString &selector : match.captured(1).split(u','))
            readDeclarations(match.captured(2), rules[selector.simplified()]);
    }
    return rules;
}

Rules expectedSheet(bool dark)
{
    Rules rules;
    for (const ExpectedRule &rule : expectedRules() + (dark ? QList<ExpectedRule>{} : expectedLightRules()))
        readDeclarations(rule.shape + u';' + (dark ? rule.dark : rule.light), rules[rule.selector]);
    return rules;
}

const QString &sheetText(bool dark)
{
    return dark ? darkStyleSheet() : lightStyleSheet();
}

QString withoutColours(QString value)
{
    static const QRegularExpression colour(
        u"#[0-9a-f]+|rgba\\([^)]*\\)|q(linear|conical)gradient\\([^)]*\\)|transparent"_s);
    return value.replace(colour, u"colour"_s);
}

Rules shapesOf(const QString &sheet)
{
    Rules rules = readSheet(sheet);
    for (Declarations &declarations : rules)
        for (QString &value : declarations)
            value = withoutColours(value);
    return rules;
}

} // namespace

class TestStyleSheets : public QObject
{
    Q_OBJECT

private slots:
    void textIsThatOfItsFile_data();
    void textIsThatOfItsFile();
    void rule_data();
    void rule();
    void hasNoFurtherRule_data();
    void hasNoFurtherRule();
    void shapesAreTheSameInBothSheets();
    void lightCardAloneHasABorder();
    void hintRowRulesExistOnlyInTheLightSheet();
    void footerAvatarIsOnlyMentionedInAComment_data();
    void footerAvatarIsOnlyMentionedInAComment();
    void everyRuleEndsAfterItsLastDeclaration_data();
    void everyRuleEndsAfterItsLastDeclaration();
    void accentReplacesBothLiteralsInTheWholeSheet_data();
    void accentReplacesBothLiteralsInTheWholeSheet();
};

static void addBothSheets()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("dark") << true;
    QTest::newRow("light") << false;
}

void TestStyleSheets::textIsThatOfItsFile_data()
{
    addBothSheets();
}

// The two sheets are made from one template: not a byte of either may change unnoticed.
void TestStyleSheets::textIsThatOfItsFile()
{
    QFETCH(bool, dark);
    QFile file(dark ? QStringLiteral(SHEET_FILES "/dark.qss") : QStringLiteral(SHEET_FILES "/light.qss"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto expected = QString::fromUtf8(file.readAll()).split(u'\n');
    const auto lines = sheetText(dark).split(u'\n');
    for (qsizetype i = 0; i < qMin(lines.size(), expected.size()); ++i)
        QCOMPARE(lines[i], expected[i]);
    QCOMPARE(lines.size(), expected.size());
}

void TestStyleSheets::rule_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QString>("selector");
    for (const bool dark : {true, false}) {
        const auto sheet = expectedSheet(dark);
        for (auto rule = sheet.keyBegin(); rule != sheet.keyEnd(); ++rule)
            QTest::addRow("%s: %s", dark ? "dark" : "light", qPrintable(*rule)) << dark << *rule;
    }
}

void TestStyleSheets::rule()
{
    QFETCH(bool, dark);
    QFETCH(QString, selector);
    QCOMPARE(readSheet(sheetText(dark)).value(selector), expectedSheet(dark).value(selector));
}

void TestStyleSheets::hasNoFurtherRule_data()
{
    addBothSheets();
}

void TestStyleSheets::hasNoFurtherRule()
{
    QFETCH(bool, dark);
    QCOMPARE(readSheet(sheetText(dark)).keys(), expectedSheet(dark).keys());
}

void TestStyleSheets::shapesAreTheSameInBothSheets()
{
    Rules light = shapesOf(lightStyleSheet());
    for (const ExpectedRule &rule : expectedLightRules())
        light.remove(rule.selector);
    light[u"#settingsCard"_s].remove(u"border"_s);
    QCOMPARE(light, shapesOf(darkStyleSheet()));
}

void TestStyleSheets::lightCardAloneHasABorder()
{
    QVERIFY(!readSheet(darkStyleSheet()).value(u"#settingsCard"_s).contains(u"border"_s));
    QCOMPARE(readSheet(lightStyleSheet()).value(u"#settingsCard"_s).value(u"border"_s),
             u"1px solid #d0daf0"_s);
}

void TestStyleSheets::hintRowRulesExistOnlyInTheLightSheet()
{
    for (const ExpectedRule &rule : expectedLightRules())
        QVERIFY(readSheet(lightStyleSheet()).contains(rule.selector));
    QVERIFY(!darkStyleSheet().contains(u"hint"_s));
}

void TestStyleSheets::footerAvatarIsOnlyMentionedInAComment_data()
{
    addBothSheets();
}

void TestStyleSheets::footerAvatarIsOnlyMentionedInAComment()
{
    QFETCH(bool, dark);
    QCOMPARE(sheetText(dark).count(u"/* #footerAvatar styled inline to allow pixmap override */"_s), 1);
    QCOMPARE(sheetText(dark).count(u"footerAvatar"_s), 1);
}

void TestStyleSheets::everyRuleEndsAfterItsLastDeclaration_data()
{
    addBothSheets();
}

// A forgotten brace or semicolon would silently join two declarations into one.
void TestStyleSheets::everyRuleEndsAfterItsLastDeclaration()
{
    QFETCH(bool, dark);
    const QString &sheet = sheetText(dark);
    static const QRegularExpression unfinished(u"[^;{}\\s]\\s*\\}"_s);
    QVERIFY(!unfinished.match(sheet).hasMatch());
    QCOMPARE(sheet.count(u'{'), sheet.count(u'}'));
}

void TestStyleSheets::accentReplacesBothLiteralsInTheWholeSheet_data()
{
    addBothSheets();
}

void TestStyleSheets::accentReplacesBothLiteralsInTheWholeSheet()
{
    QFETCH(bool, dark);
    const QString &sheet = sheetText(dark);
    const auto literals = sheet.count(u"#3b8beb"_s) + sheet.count(u"#2563eb"_s);
    const QString red = withAccent(sheet, u"#e05455"_s);
    QCOMPARE(red.count(u"#e05455"_s), literals);
    QVERIFY(!red.contains(u"#3b8beb"_s, Qt::CaseInsensitive));
    QVERIFY(!red.contains(u"#2563eb"_s, Qt::CaseInsensitive));
    for (const QString &kept : {u"#5aa0f5"_s, u"#1a6acc"_s, u"#5b5bd6"_s})
        QCOMPARE(red.count(kept), sheet.count(kept));
    QCOMPARE(withAccent(sheet, defaultAccent.toString()), sheet);
}

TIDELOFT_TEST_MAIN(TestStyleSheets)
#include "tst_style_sheets.moc"
