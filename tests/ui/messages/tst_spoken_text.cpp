// What a screen reader says of conversations, messages and days.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/messages/spoken_text.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestSpokenText : public QObject
{
    Q_OBJECT

private slots:
    void conversation_data();
    void conversation();
    void historyRow_data();
    void historyRow();
    void unreadableMessageSaysWhy();
};

void TestSpokenText::conversation_data()
{
    QTest::addColumn<QString>("preview");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all of it") << u"See you"_s << u"12:04"_s << u"bob, See you, 12:04"_s;
    QTest::newRow("without a time") << u"See you"_s << QString() << u"bob, See you"_s;
    QTest::newRow("without a preview") << QString() << u"12:04"_s << u"bob, 12:04"_s;
    QTest::newRow("the name alone") << QString() << QString() << u"bob"_s;
}

void TestSpokenText::conversation()
{
    QFETCH(const QString, preview);
    QFETCH(const QString, time);
    QFETCH(const QString, expected);
    QCOMPARE(spokenText(ConversationRowModel{u"bob"_s, preview, time}), expected);
}

void TestSpokenText::historyRow_data()
{
    QTest::addColumn<HistoryRow>("row");
    QTest::addColumn<QString>("expected");
    QTest::newRow("day") << HistoryRow(DaySeparatorModel{u"Today"_s}) << u"Today"_s;
    MessageRowModel message{
        .position = GroupPosition::Middle, .text = u"See you"_s, .speaker = u"bob"_s, .clock = u"12:04"_s};
    QTest::newRow("grouped message") << HistoryRow(message) << u"bob, See you, 12:04"_s;
    message.clock.clear();
    QTest::newRow("message without a time") << HistoryRow(message) << u"bob, See you"_s;
}

void TestSpokenText::historyRow()
{
    QFETCH(const HistoryRow, row);
    QTEST(spokenText(row), "expected");
}

void TestSpokenText::unreadableMessageSaysWhy()
{
    const MessageRowModel message{.text = LazyText(u"Unreadable"_s, u"Private key not found."_s),
                                  .speaker = u"bob"_s,
                                  .clock = u"12:04"_s};
    const QString spoken = spokenText(HistoryRow(message));
    QVERIFY2(spoken.startsWith(u"bob, Unreadable, 12:04, "_s), qPrintable(spoken));
    QVERIFY2(spoken.endsWith(message.trouble()) && !message.trouble().isEmpty(), qPrintable(spoken));
}

TIDELOFT_TEST_MAIN(TestSpokenText)
#include "tst_spoken_text.moc"
