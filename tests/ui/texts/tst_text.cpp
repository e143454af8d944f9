// Which of a text's two versions is shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/texts/text.h"

using namespace Qt::StringLiterals;
using tideloft::ui::chooseText;
using tideloft::ui::Language;
using tideloft::ui::languageFromIndex;

class TestText : public QObject
{
    Q_OBJECT

private slots:
    void indexToText_data();
    void indexToText();
    void languagesAreTheirIndices();
};

void TestText::indexToText_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");
    QTest::newRow("0 is Swedish") << 0 << u"Idag"_s;
    QTest::newRow("1 is English") << 1 << u"Today"_s;
    QTest::newRow("no choice is Swedish") << -1 << u"Idag"_s;
    QTest::newRow("an unknown index is Swedish") << 2 << u"Idag"_s;
}

void TestText::indexToText()
{
    QFETCH(const int, index);
    QFETCH(const QString, expected);
    QCOMPARE(chooseText(languageFromIndex(index), u"Idag"_s, u"Today"_s), expected);
}

void TestText::languagesAreTheirIndices()
{
    QCOMPARE(static_cast<int>(Language::Swedish), 0);
    QCOMPARE(static_cast<int>(Language::English), 1);
}

TIDELOFT_TEST_MAIN(TestText)
#include "tst_text.moc"
