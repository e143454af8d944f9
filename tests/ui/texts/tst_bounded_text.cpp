// How much of a text is drawn: all of what people write, and the first part of what nobody does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/messages/history_row_models.h"
#include "ui/texts/bounded_text.h"

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestBoundedText : public QObject
{
    Q_OBJECT

private slots:
    void whole_data();
    void whole();
    void cut_data();
    void cut();
    void costlyTextsKeepWithinTheirEffort_data();
    void costlyTextsKeepWithinTheirEffort();
    void effortIsCountedInPlainLetters_data();
    void effortIsCountedInPlainLetters();
    void noRowIsCutForOthers();
    void ordinaryHistoryIsWhole_data();
    void ordinaryHistoryIsWhole();
    void separatorsStay();
    void oneLine();
};

namespace
{

QString many(const QString &part, int count)
{
    return part.repeated(count);
}

const QString mark = QString(QChar(0x301));
const QString alef = QString(QChar(0x5d0));

QList<HistoryRow> rowsWith(const QStringList &texts)
{
    QList<DisplayRecord> records;
    for (const QString &text : texts)
        records.append({.from = u"bob"_s, .text = text, .time = {}, .isMine = false});
    return historyRows(records, QDate(2024, 5, 17), Language::English);
}

QString textOf(const HistoryRow &row)
{
    return std::get<MessageRowModel>(row).text.value();
}

} // namespace

void TestBoundedText::whole_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("short") << u"Hello"_s;
    QTest::newRow("100,000 characters in one word") << many(u"x"_s, 100'000);
    QTest::newRow("100,000 characters in words") << many(u"word "_s, 20'000);
    QTest::newRow("50,000 pairs in words") << many(u"𝒜 "_s, 33'333);
    QTest::newRow("2,000 lines") << many(u"x\n"_s, 1'999) + u"x"_s;
    QTest::newRow("2,000 lines of another system") << many(u"x\r\n"_s, 1'999) + u"x"_s;
    QTest::newRow("1,000 emoji") << many(u"🔥"_s, 1'000);
    QTest::newRow("100,000 Chinese characters") << many(u"中"_s, 100'000);
    QTest::newRow("100,000 characters of Arabic") << many(u"سلام "_s, 20'000);
    QTest::newRow("100,000 characters of Hebrew and English") << many(alef + u"bc def "_s, 12'500);
    QTest::newRow("100,000 characters of Hindi") << many(u"नमस्ते "_s, 14'285);
    QTest::newRow("decorated letters") << many(u"a"_s + many(mark, 30), 500);
    QTest::newRow("2,000 characters of Thai without a blank") << many(u"ก"_s, 2'000);
    QTest::newRow("half a pair") << QString(QChar(0xd800));
}

void TestBoundedText::whole()
{
    QFETCH(const QString, text);
    QCOMPARE(firstPart(text, messageLimits), text);
}

void TestBoundedText::cut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<TextLimits>("limits");
    QTest::addColumn<QString>("expected");
    QTest::newRow("100,001 characters")
        << many(u"x"_s, 100'001) << messageLimits << many(u"x"_s, 100'000) + u"…"_s;
    QTest::newRow("a pair at the edge is not cut in half")
        << many(u"x"_s, 99'999) + u"😀"_s << messageLimits << many(u"x"_s, 99'999) + u"…"_s;
    QTest::newRow("2,001 lines") << many(u"x\n"_s, 2'000) << messageLimits << many(u"x\n"_s, 1'999) + u"x…"_s;
    QTest::newRow("2,001 lines of another system")
        << many(u"x\r\n"_s, 2'000) << messageLimits << many(u"x\r\n"_s, 1'999) + u"x…"_s;
    QTest::newRow("one million line breaks")
        << many(u"\n"_s, 1'000'000) << messageLimits << many(u"\n"_s, 1'999) + u"…"_s;
    QTest::newRow("line and paragraph separators")
        << many(u"\u2028\u2029"_s, 2'000) << messageLimits << many(u"\u2028\u2029"_s, 999) + u"\u2028…"_s;
    QTest::newRow("1,001 emoji") << many(u"🔥"_s, 1'001) << messageLimits << many(u"🔥"_s, 1'000) + u"…"_s;
    QTest::newRow("1,001 signs that U+FE0F makes emoji")
        << many(u"\u00a9\ufe0f"_s, 1'001) << messageLimits << many(u"\u00a9\ufe0f"_s, 1'000) + u"\u00a9…"_s;
    QTest::newRow("4,000 characters of an error")
        << many(u"x"_s, 4'000) << errorLimits << many(u"x"_s, 4'000);
    QTest::newRow("4,001 characters of an error")
        << many(u"x"_s, 4'001) << errorLimits << many(u"x"_s, 4'000) + u"…"_s;
    QTest::newRow("2,000 lines of an error") << many(u"x\n"_s, 2'000) << errorLimits << many(u"x\n"_s, 2'000);
    QTest::newRow("4,000 line breaks of an error")
        << many(u"\n"_s, 4'000) << errorLimits << many(u"\n"_s, 3'999) + u"…"_s;
    QTest::newRow("1,000 characters of a preview")
        << many(u"x"_s, 1'000) << previewLimits << many(u"x"_s, 1'000);
    QTest::newRow("1,001 characters of a preview")
        << many(u"x"_s, 1'001) << previewLimits << many(u"x"_s, 1'000) + u"…"_s;
}

void TestBoundedText::cut()
{
    QFETCH(const QString, text);
    QFETCH(const TextLimits, limits);
    QFETCH(const QString, expected);
    QCOMPARE(firstPart(text, limits), expected);
}

void TestBoundedText::costlyTextsKeepWithinTheirEffort_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("100,000 marks on one letter") << u"a"_s + many(mark, 99'999);
    QTest::newRow("1,000 marks on each letter") << many(u"a"_s + many(mark, 999), 100);
    QTest::newRow("two directions in one word") << many(alef + u"a"_s, 50'000);
    QTest::newRow("two scripts in one word") << many(u"aα"_s, 50'000);
    QTest::newRow("isolates in isolates") << many(u"\u2067a"_s, 50'000);
    QTest::newRow("overrides in overrides") << many(u"\u202e\u202da"_s, 33'333);
    QTest::newRow("one Arabic word") << many(u"س"_s, 100'000);
    QTest::newRow("halves of pairs") << QString(100'000, QChar(0xd800));
}

void TestBoundedText::costlyTextsKeepWithinTheirEffort()
{
    QFETCH(const QString, text);
    const QString shown = firstPart(text, messageLimits);
    QVERIFY(shown.endsWith(u'…'));
    QVERIFY(shown.size() > 500); // no person writes that much of it
    QVERIFY(text.startsWith(shown.chopped(1)));
    QVERIFY(drawingEffort(shown.chopped(1)) <= messageLimits.effort);
    QVERIFY(drawingEffort(text) > messageLimits.effort);
}

void TestBoundedText::effortIsCountedInPlainLetters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("effort");
    QString west;
    for (char16_t unit = 0x20; unit < 0x300; ++unit)
        west.append(unit);
    QTest::newRow("every character of Europe's west") << west << 0x2e0;
    QTest::newRow("a line break") << u"a\nb"_s << 122;
    QTest::newRow("a line break of another system") << u"a\r\nb"_s << 123;
    QTest::newRow("one emoji") << u"🔥"_s << 1'201;
    QTest::newRow("one emoji that U+FE0F asks for") << u"❤\ufe0f"_s << 1'214;
    QTest::newRow("one sign that U+FE0F makes an emoji") << u"\u00a9\ufe0f"_s << 1'214;
    QTest::newRow("letters around an emoji") << u"ab🔥ab🔥"_s << 2'406;
    QTest::newRow("a mark on a letter") << u"a"_s + mark << 14;
    QTest::newRow("fifteen marks on a letter") << u"a"_s + many(mark, 15) << 200;
    QTest::newRow("another script") << u"α"_s << 81;
    QTest::newRow("one script after the other") << u"aα "_s << 83;
    QTest::newRow("another direction and back") << u"a"_s + alef + u"a"_s << 163;
    QTest::newRow("an isolate") << u"\u2067"_s << 81;
}

void TestBoundedText::effortIsCountedInPlainLetters()
{
    QFETCH(const QString, text);
    QFETCH(const int, effort);
    QCOMPARE(drawingEffort(text), qint64(effort));
}

void TestBoundedText::noRowIsCutForOthers()
{
    const QString longWord = many(u"x"_s, 100'000);
    for (const HistoryRow &row : rowsWith(QStringList(100, longWord)))
        QCOMPARE(textOf(row), longWord);
    const QString lines = many(u"x\n"_s, 1'999);
    for (const HistoryRow &row : rowsWith(QStringList(100, lines)))
        QCOMPARE(textOf(row), lines);
}

void TestBoundedText::ordinaryHistoryIsWhole_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("text");
    QTest::newRow("emoji at each sentence's end")
        << 1'000 << many(u"So this is what somebody writes on a long day 🎉 "_s, 4);
    QTest::newRow("emoji alone") << 50'000 << u"😂😂😂"_s;
    QTest::newRow("long letters") << 5'000 << many(u"This is a long letter. "_s, 50);
    QTest::newRow("Japanese") << 5'000 << many(u"漢字とかなとカタカナを書く。"_s, 20);
    QTest::newRow("Arabic with numbers") << 5'000 << many(u"سلام 12 "_s, 10);
    QTest::newRow("lists") << 1'000 << many(u"- one of the things\n"_s, 30);
}

void TestBoundedText::ordinaryHistoryIsWhole()
{
    QFETCH(const int, count);
    QFETCH(const QString, text);
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(text + QString::number(i));
    const QList<HistoryRow> rows = rowsWith(texts);
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(textOf(rows.at(i)), texts.at(i));
}

void TestBoundedText::separatorsStay()
{
    const QDateTime noon(QDate(2024, 5, 17), QTime(12, 0));
    const QList<HistoryRow> rows = historyRows(
        {{.from = u"bob"_s, .text = many(u"x"_s, 100'001), .time = noon}}, noon.date(), Language::English);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(std::get<DaySeparatorModel>(rows.first()).label, u"Today"_s);
    QCOMPARE(textOf(rows.last()).size(), 100'001); // 100,000 and "…"
}

void TestBoundedText::oneLine()
{
    QCOMPARE(inOneLine(u"Bob & <b>"_s), u"Bob & <b>"_s);
    QCOMPARE(inOneLine(u"a\nb\rc\u2028d\u2029e"_s), u"a b c d e"_s);
    QCOMPARE(inOneLine(u"shown\u009ctoo"_s), u"shown too"_s); // the toolkit would draw one of the two
    QCOMPARE(inOneLine(many(u"x"_s, 1'000)), many(u"x"_s, 1'000));
    QCOMPARE(inOneLine(many(u"x"_s, 1'001)), many(u"x"_s, 1'000) + u"…"_s);
    QCOMPARE(inOneLine(many(u"\n"_s, 1'000'000)), many(u" "_s, 999) + u"…"_s); // 1,000 lines
}

TIDELOFT_TEST_MAIN(TestBoundedText)
#include "tst_bounded_text.moc"
