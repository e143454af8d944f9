// The two palettes: they know exactly the roles that the template of the style sheet has.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/palettes.h"
#include "ui/style/style_sheets.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestPalettes : public QObject
{
    Q_OBJECT

private slots:
    void everyRoleOfTheTemplateHasOneRow();
    void noRoleIsTheSameInBoth();
    void nothingOfTheTemplateIsLeftInASheet();
};

void TestPalettes::everyRoleOfTheTemplateHasOneRow()
{
    static const QRegularExpression role(u"\\$([a-z-]+)"_s);
    QSet<QString> inTemplate;
    for (auto matches = role.globalMatch(styleSheetTemplate().toString()); matches.hasNext();)
        inTemplate.insert(matches.next().captured(1));
    QStringList inPalettes;
    for (const PaletteRole &row : paletteRoles())
        inPalettes << row.name.toString();
    inPalettes.sort();
    QStringList expected(inTemplate.cbegin(), inTemplate.cend());
    expected.sort();
    QCOMPARE(inPalettes, expected);
}

void TestPalettes::noRoleIsTheSameInBoth()
{
    for (const PaletteRole &role : paletteRoles())
        QVERIFY2(role.dark != role.light, qPrintable(role.name.toString()));
}

void TestPalettes::nothingOfTheTemplateIsLeftInASheet()
{
    QVERIFY(!darkStyleSheet().contains(u'$'));
    QVERIFY(!lightStyleSheet().contains(u'$'));
}

TIDELOFT_TEST_MAIN(TestPalettes)
#include "tst_palettes.moc"
