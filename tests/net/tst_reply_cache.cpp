// The arrays of repeated replies: always what the parser makes of the bytes, but parsed only where they
// differ.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_cache.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using tideloft::net::ReplyCache;

namespace
{

QByteArray join(const QByteArrayList &elements)
{
    return '[' + elements.join(',') + ']';
}

// Bytes of its own, as every reply has them.
QByteArray arrived(const QByteArray &body)
{
    return {body.constData(), body.size()};
}

QByteArray pick(QRandomGenerator &random, const QByteArrayList &from)
{
    return from.at(random.bounded(int(from.size())));
}

} // namespace

class TestReplyCache : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatTheParserReads_data();
    void readsWhatTheParserReads();
    void unchangedReplyIsNotParsed();
    void onlyWhatDiffersIsParsed_data();
    void onlyWhatDiffersIsParsed();
    void brokenReplyInBetweenIsNoArray();
    void elementIsNoDeeperThanInItsArray();
    void clearEmptiesIt();
    void randomRepliesReadAsAfresh();
};

void TestReplyCache::readsWhatTheParserReads_data()
{
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char *name, const QByteArray &body) { QTest::newRow(name) << body; };
    row("nothing", "");
    row("white space", " \n");
    row("empty array", "[]");
    row("empty array with white space", " [ \n] ");
    row("object", R"({"a":[1,2]})");
    row("text", R"("[1]")");
    row("numbers", "[1, 2.5,-3e2 ]");
    row("names of all kinds", R"([true,false,null,"x",{},[]])");
    row("commas and brackets in texts", R"(["a,b]","}{[",{"k,]":"v\",]"}])");
    row("backslashes before a quotation mark", R"(["\\","\\\"",[{"a":"\\\\"}],"\\\\\\\","])");
    row("nested", R"([[1,[2,3]],{"a":[{"b":[1,2]}]}])");
    row("byte order mark", "\xEF\xBB\xBF[1]");
    row("text that does not end", R"(["a)");
    row("text that does not end, with a bracket", R"(["a])");
    row("comma at the end", "[1,]");
    row("comma alone", "[,]");
    row("two values in one place", "[1 2,3]");
    row("unbalanced", "[{]");
    row("crossed", "[{[}],1]");
    row("closed twice", "[1]]");
    row("closed inside", "[1],[2]");
    row("no closing bracket", "[1,2");
    row("words after the end", "[1]x");
    row("zero byte", QByteArray("[1,\0,2]", 7));
    row("broken UTF-8", "[\"\xC3\"]");
    row("lone surrogate", R"(["\ud800"])");
}

void TestReplyCache::readsWhatTheParserReads()
{
    QFETCH(const QByteArray, body);
    const QJsonDocument expected = QJsonDocument::fromJson(body);
    ReplyCache fresh;
    for (int reply = 0; reply < 2; ++reply)
        QCOMPARE(fresh.read(arrived(body)), expected);
    ReplyCache afterAnother;
    afterAnother.read("[1,{\"a\":1},2]");
    QCOMPARE(afterAnother.read(arrived(body)), expected);
}

void TestReplyCache::unchangedReplyIsNotParsed()
{
    ReplyCache array;
    const QByteArray body = R"([{"a":1},{"b":2}])";
    array.read(arrived(body));
    QCOMPARE(array.parsedElements(), 2);
    QCOMPARE(array.read(arrived(body)), QJsonDocument::fromJson(body));
    QCOMPARE(array.parsedElements(), 2);
}

void TestReplyCache::onlyWhatDiffersIsParsed_data()
{
    QTest::addColumn<QByteArray>("now");
    QTest::addColumn<int>("parsed");
    QTest::newRow("one more at the end") << QByteArray(R"([{"a":1},{"b":2},{"c":3},{"d":4}])") << 1;
    QTest::newRow("one more in front") << QByteArray(R"([{"z":0},{"a":1},{"b":2},{"c":3}])") << 1;
    QTest::newRow("one changed in between") << QByteArray(R"([{"a":1},{"b":"2"},{"c":3}])") << 1;
    QTest::newRow("one gone in between") << QByteArray(R"([{"a":1},{"c":3}])") << 0;
    QTest::newRow("first gone") << QByteArray(R"([{"b":2},{"c":3}])") << 0;
    QTest::newRow("all others") << QByteArray("[1,2,3,4]") << 4;
    QTest::newRow("the same twice") << QByteArray(R"([{"a":1},{"b":2},{"c":3},{"a":1},{"b":2},{"c":3}])")
                                    << 3;
}

void TestReplyCache::onlyWhatDiffersIsParsed()
{
    QFETCH(const QByteArray, now);
    ReplyCache array;
    array.read(R"([{"a":1},{"b":2},{"c":3}])");
    QCOMPARE(array.read(now), QJsonDocument::fromJson(now));
    QTEST(int(array.parsedElements()) - 3, "parsed");
}

void TestReplyCache::brokenReplyInBetweenIsNoArray()
{
    ReplyCache array;
    const QByteArray body = R"([{"a":1},{"b":2}])";
    array.read(body);
    QVERIFY(array.read(R"([{"a":1},{"b":2},{])").isNull());
    QVERIFY(array.read(R"([{"a":1},{"b":2},{"c" 3}])").isNull());
    QCOMPARE(array.read(body), QJsonDocument::fromJson(body));
}

// The parser refuses what is nested deeper than 1,024.
void TestReplyCache::elementIsNoDeeperThanInItsArray()
{
    for (const int depth : {1022, 1023, 1024, 1025}) {
        ReplyCache array;
        array.read("[1]");
        const QByteArray body = join({"1", QByteArray(depth, '[') + QByteArray(depth, ']')});
        QCOMPARE(array.read(body), QJsonDocument::fromJson(body));
    }
}

void TestReplyCache::clearEmptiesIt()
{
    ReplyCache array;
    const QByteArray body = "[1,2]";
    array.read(body);
    array.clear();
    QCOMPARE(array.read(body), QJsonDocument::fromJson(body));
    QCOMPARE(array.parsedElements(), 4);
}

void TestReplyCache::randomRepliesReadAsAfresh()
{
    QRandomGenerator random(20260514);
    const QByteArrayList elements{"1", "\"a\"", "\",]\"", R"({"a":[1,{"b":"\\"}]})", "[]", "{}", " null "};
    const QByteArrayList noise{"]", "[", ",", "\"", "\\", "{", "x", " "};
    QByteArrayList now;
    ReplyCache array;
    for (int reply = 0; reply < tideloft::tests::rounds(20'000, 2'000'000); ++reply) {
        const int place = random.bounded(int(now.size()) + 1);
        if (random.bounded(3) == 0 && place < now.size())
            now.removeAt(place);
        else if (now.size() < 12)
            now.insert(place, pick(random, elements));
        QByteArray body = join(now);
        if (random.bounded(4) == 0)
            body.insert(random.bounded(int(body.size()) + 1), pick(random, noise));
        QCOMPARE(array.read(body), QJsonDocument::fromJson(body));
    }
}

TIDELOFT_TEST_MAIN(TestReplyCache)
#include "tst_reply_cache.moc"
