// Messages written as JSON: every text comes back as it was, and replies stay within their bounds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/item_list.h"
#include "service/api/message_items.h"
#include "tests/support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestMessageItems : public QObject
{
    Q_OBJECT

private slots:
    void textsComeBack_data();
    void textsComeBack();
    void times_data();
    void times();
    void senderAndPeer();
    void missingKeysAreNone();
    void listsAreArrays();
    void listEndsBeforeItIsTooLarge();
    void memoryIsTakenWhileTheListGrows();
    void replyTakesHardlyMoreThanItHas();
};

void TestMessageItems::textsComeBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("letters") << u"hej å 😀"_s;
    QTest::newRow("quotes and backslashes") << u"\"\\\"\\\\"_s;
    QString controls;
    for (char16_t c = 0; c <= 0x20; ++c)
        controls += QChar(c);
    QTest::newRow("control characters") << controls;
    QTest::newRow("special at the end") << u"x\n"_s;
    QTest::newRow("delete and line separator") << u"\x7f\u2028\ufeff"_s;
}

void TestMessageItems::textsComeBack()
{
    QFETCH(QString, text);
    const QByteArray json = '[' + quoted(text.toUtf8()) + ']';
    QJsonParseError error;
    const QJsonArray array = QJsonDocument::fromJson(json, &error).array();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(array.at(0).toString(), text);
}

void TestMessageItems::times_data()
{
    QTest::addColumn<qint64>("time");
    QTest::newRow("beginning") << qint64{0};
    QTest::newRow("a millisecond later") << qint64{1};
    QTest::newRow("leap day")
        << QDateTime(QDate(2028, 2, 29), QTime(23, 59, 59, 999), QTimeZone::utc()).toMSecsSinceEpoch();
    QTest::newRow("new year")
        << QDateTime(QDate(2027, 1, 1), QTime(0, 0), QTimeZone::utc()).toMSecsSinceEpoch();
    QTest::newRow("before 1970") << qint64{-1};
}

void TestMessageItems::times()
{
    QFETCH(qint64, time);
    const QString expected = QDateTime::fromMSecsSinceEpoch(time).toUTC().toString(Qt::ISODateWithMs);
    QCOMPARE(QString::fromLatin1(isoTime(time)), expected);
}

void TestMessageItems::senderAndPeer()
{
    const MessageRow row{u"bob"_s, false, "text", "iv", R"([{"deviceId":"a"}])", "[]", true, 0};
    const QByteArray item = messageItem(row, u"alice"_s, u"bob"_s);
    QCOMPARE(item, QByteArray(R"({"createdAt":"1970-01-01T00:00:00.000Z","encrypted":true,"from":"bob",)"
                              R"("iv":"iv","peer":"bob","recipientKeys":[],"senderKeys":[{"deviceId":"a"}],)"
                              R"("text":"text","to":"alice"})"));
}

void TestMessageItems::missingKeysAreNone()
{
    const QByteArray item = messageItem({{}, true, "text", "", "", "", false, 0}, u"alice"_s, u"bob"_s);
    const QJsonObject object = QJsonDocument::fromJson(item).object();
    QCOMPARE(object.value(u"senderKeys"_s), QJsonValue(QJsonArray()));
    QCOMPARE(object.value(u"from"_s).toString(), u"alice"_s);
    QVERIFY(!object.contains(u"peer"_s));
}

void TestMessageItems::listsAreArrays()
{
    ByteBudget budget(1000, 1000);
    ItemList none(budget, 1);
    QCOMPARE(none.response().body, QByteArray("[]"));
    ItemList two(budget, 1);
    QVERIFY(two.add("1"));
    QVERIFY(two.add("2"));
    QCOMPARE(two.reversedResponse().body, QByteArray("[2,1]"));
}

void TestMessageItems::listEndsBeforeItIsTooLarge()
{
    ByteBudget budget(1LL << 40U, 1LL << 40U);
    ItemList list(budget, 1);
    const QByteArray megabyte(1024 * 1024, '1');
    int added = 0;
    while (list.add(megabyte))
        ++added;
    QCOMPARE(added, 15); // and the commas
    QVERIFY(list.response().body.size() <= 16 * 1024 * 1024);
}

void TestMessageItems::memoryIsTakenWhileTheListGrows()
{
    constexpr std::uint64_t all = 1024ULL * 1024;
    ByteBudget budget(all, all);
    const QByteArray item(100'000, '1');
    {
        ItemList list(budget, 1);
        QVERIFY(budget.take(2, all)); // nothing yet
        list.add(item);
        QVERIFY(!budget.take(2, all));
        const Response response = list.response();
        QVERIFY(!budget.take(2, all)); // the reply has it now
        ItemList other(budget, 2);
        try {
            for (int i = 0; i < 12; ++i)
                other.add(item);
            QFAIL("more than there is");
        } catch (const Refusal &refusal) {
            QCOMPARE(refusal.status, 503);
        }
    }
    QVERIFY(budget.take(2, all));
}

// Or a few hundred slow readers would leave nothing to everybody else.
void TestMessageItems::replyTakesHardlyMoreThanItHas()
{
    ByteBudget budget(1'400'000, 1'400'000);
    std::vector<Response> replies;
    for (int i = 0; i < 10; ++i) {
        ItemList list(budget, i);
        QVERIFY(list.add(QByteArray(100'000, '1')));
        replies.push_back(list.response());
    }
    QVERIFY(!budget.take(10, 85'000)); // a third of the rest
}

TIDELOFT_TEST_MAIN(TestMessageItems)
#include "tst_message_items.moc"
