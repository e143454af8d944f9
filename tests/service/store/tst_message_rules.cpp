// Whether a message is kept: one rule after the other.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/message_rules.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

Q_DECLARE_METATYPE(tideloft::service::MessageFacts)

class TestMessageRules : public QObject
{
    Q_OBJECT

private slots:
    void firstRuleThatForbidsDecides_data();
    void firstRuleThatForbidsDecides();
    void conversationsAreCountedWhereThatMatters();
    void sizeIsThatOfUtf8();
};

void TestMessageRules::firstRuleThatForbidsDecides_data()
{
    constexpr auto active = UserState::Active;
    constexpr auto disabled = UserState::Disabled;
    constexpr auto deleted = UserState::Deleted;
    QTest::addColumn<MessageFacts>("facts");
    QTest::addColumn<int>("begun");
    QTest::addColumn<int>("expected");
    const auto add = [](const char *name, const MessageFacts &facts, int begun, Stored expected) {
        QTest::newRow(name) << facts << begun << static_cast<int>(expected);
    };
    // The quota is 3 messages, 100 bytes and 2 conversations; the message has 10 bytes.
    add("everything is forbidden", {deleted, deleted, 3, 100, true, false}, 2, Stored::NoSender);
    add("sender is disabled", {disabled, active, 0, 0, false, true}, 0, Stored::NoSender);
    add("stored before, and there is no recipient", {active, deleted, 3, 100, true, false}, 2,
        Stored::Before);
    add("no recipient", {active, deleted, 3, 100, false, false}, 2, Stored::NoRecipient);
    add("recipient is disabled", {active, disabled, 0, 0, false, true}, 0, Stored::Now);
    add("too many messages", {active, active, 3, 100, false, false}, 2, Stored::TooManyMessages);
    add("too many bytes", {active, active, 2, 91, false, false}, 2, Stored::TooManyBytes);
    add("too many conversations", {active, active, 2, 90, false, false}, 2, Stored::TooManyConversations);
    add("the last conversation", {active, active, 2, 90, false, false}, 1, Stored::Now);
    add("one that goes on", {active, active, 2, 90, false, true}, 2, Stored::Now);
}

void TestMessageRules::firstRuleThatForbidsDecides()
{
    QFETCH(MessageFacts, facts);
    QFETCH(int, begun);
    QFETCH(int, expected);
    QCOMPARE(static_cast<int>(decide(facts, 10, {3, 100, 2}, [&] { return begun; })), expected);
}

void TestMessageRules::conversationsAreCountedWhereThatMatters()
{
    int asked = 0;
    const auto begun = [&asked] {
        ++asked;
        return qint64{0};
    };
    decide({UserState::Active, UserState::Active, 0, 0, false, true}, 1, {9, 9, 9}, begun);
    decide({UserState::Active, UserState::Deleted, 0, 0, false, false}, 1, {9, 9, 9}, begun);
    QCOMPARE(asked, 0);
    decide({UserState::Active, UserState::Active, 0, 0, false, false}, 1, {9, 9, 9}, begun);
    QCOMPARE(asked, 1);
}

void TestMessageRules::sizeIsThatOfUtf8()
{
    QCOMPARE(sizeOf({u"å"_s, u"n"_s, u"[]"_s, u"[1]"_s, true, 1}), 2 + 1 + 2 + 3);
}

TIDELOFT_TEST_MAIN(TestMessageRules)
#include "tst_message_rules.moc"
