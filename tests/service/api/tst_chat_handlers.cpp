// Sending messages, and reading histories and conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestChat : public QObject
{
    Q_OBJECT

private slots:
    void sealedMessageComesBackAsItWas();
    void senderIsTheUserOfTheSession();
    void recipients_data();
    void recipients();
    void historyIsOldestFirstWhateverTheClockSays();
    void historyShowsOnlyThePair();
    void historyOfAStranger_data();
    void historyOfAStranger();
    void conversationsAreNewestFirstOneAPeer();
    void messageToOneself();
    void refusedMessageLeavesNothing();
    void textIsOnlyText();
    void messageThatComesTwiceIsThereOnce();

private:
    static QStringList texts(const QJsonArray &items)
    {
        QStringList texts;
        for (const QJsonValue &item : items)
            texts << item[u"text"_s].toString();
        return texts;
    }
    static QJsonArray historyOf(ApiFixture &fixture, const QByteArray &peer, const QByteArray &cookie)
    {
        return ApiFixture::array(fixture.get("/api/chat/history/" + peer, cookie));
    }
};

void TestChat::sealedMessageComesBackAsItWas()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    QCOMPARE(fixture.post("/api/chat/send", sealedMessage(u"bob"_s), alice).status, 201);
    QJsonObject expected{{u"from"_s, u"alice"_s},
                         {u"to"_s, u"bob"_s},
                         {u"text"_s, base64(40, 't')},
                         {u"iv"_s, base64(12, 'i')},
                         {u"recipientKeys"_s, QJsonArray{wrappedKey()}},
                         {u"senderKeys"_s, QJsonArray{wrappedKey(u"mine"_s)}},
                         {u"encrypted"_s, true},
                         {u"createdAt"_s, u"2026-05-04T10:00:00.007Z"_s}};
    QCOMPARE(historyOf(fixture, "bob", alice), QJsonArray{expected});
    QCOMPARE(historyOf(fixture, "alice", bob), QJsonArray{expected});
    expected.insert(u"peer"_s, u"bob"_s);
    QCOMPARE(ApiFixture::array(fixture.get("/api/chat/conversations", alice)), QJsonArray{expected});
    expected.insert(u"peer"_s, u"alice"_s);
    QCOMPARE(ApiFixture::array(fixture.get("/api/chat/conversations", bob)), QJsonArray{expected});
}

void TestChat::senderIsTheUserOfTheSession()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    QJsonObject body = plainMessage(u"bob"_s, u"hej"_s);
    body.insert(u"from"_s, u"bob"_s);
    QCOMPARE(fixture.post("/api/chat/send", body, alice).status, 201);
    const QJsonArray items = historyOf(fixture, "bob", alice);
    QCOMPARE(items[0][u"from"_s].toString(), u"alice"_s);
    QCOMPARE(items[0][u"encrypted"_s], QJsonValue(false));
}

void TestChat::recipients_data()
{
    QTest::addColumn<QJsonValue>("to");
    QTest::addColumn<int>("status");
    QTest::newRow("known") << QJsonValue(u"bob"_s) << 201;
    QTest::newRow("other spelling") << QJsonValue(u" Bob "_s) << 201;
    QTest::newRow("unknown") << QJsonValue(u"nobody"_s) << 404;
    QTest::newRow("no name") << QJsonValue(u"' OR 1=1"_s) << 404;
    QTest::newRow("empty") << QJsonValue(u""_s) << 404;
    QTest::newRow("number") << QJsonValue(1) << 400;
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << 400;
}

void TestChat::recipients()
{
    QFETCH(QJsonValue, to);
    QFETCH(int, status);
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    QJsonObject body = sealedMessage(u"bob"_s);
    body.insert(u"to"_s, to);
    const Response response = fixture.post("/api/chat/send", body, alice);
    QCOMPARE(response.status, status);
    QCOMPARE(ApiFixture::message(response).isEmpty(), status == 201);
    QCOMPARE(historyOf(fixture, "bob", alice).size(), status == 201 ? 1 : 0);
}

void TestChat::historyIsOldestFirstWhateverTheClockSays()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"1"_s), alice);
    fixture.post("/api/chat/send", plainMessage(u"alice"_s, u"2"_s), bob);
    fixture.now = fixture.now.addSecs(-3600);
    fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"3"_s), alice);
    QCOMPARE(texts(historyOf(fixture, "bob", alice)), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(historyOf(fixture, "alice", bob), historyOf(fixture, "bob", alice));
}

void TestChat::historyShowsOnlyThePair()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    const QByteArray carol = fixture.signUp(u"carol"_s);
    fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"to bob"_s), alice);
    fixture.post("/api/chat/send", plainMessage(u"carol"_s, u"to carol"_s), bob);
    QCOMPARE(texts(historyOf(fixture, "bob", alice)), QStringList{u"to bob"_s});
    QCOMPARE(texts(historyOf(fixture, "bob", carol)), QStringList{u"to carol"_s});
    QVERIFY(historyOf(fixture, "alice", carol).isEmpty());
    QCOMPARE(texts(historyOf(fixture, "%42OB", alice)), QStringList{u"to bob"_s});
}

void TestChat::historyOfAStranger_data()
{
    QTest::addColumn<QByteArray>("peer");
    QTest::newRow("never written to") << QByteArray("bob");
    QTest::newRow("unknown") << QByteArray("nobody");
    QTest::newRow("no name at all") << QByteArray("%27%20OR%201=1%20--");
    QTest::newRow("zero character") << QByteArray("bob%00");
    QTest::newRow("broken encoding") << QByteArray("%zz%");
}

void TestChat::historyOfAStranger()
{
    QFETCH(QByteArray, peer);
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    const Response response = fixture.get("/api/chat/history/" + peer, alice);
    QCOMPARE(response.status, 200);
    QCOMPARE(response.body, QByteArray("[]"));
}

void TestChat::conversationsAreNewestFirstOneAPeer()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    fixture.signUp(u"carol"_s);
    QCOMPARE(fixture.get("/api/chat/conversations", alice).body, QByteArray("[]"));
    fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"1"_s), alice);
    fixture.post("/api/chat/send", plainMessage(u"carol"_s, u"2"_s), alice);
    fixture.post("/api/chat/send", plainMessage(u"alice"_s, u"3"_s), bob);
    const QJsonArray items = ApiFixture::array(fixture.get("/api/chat/conversations", alice));
    QCOMPARE(texts(items), (QStringList{u"3"_s, u"2"_s}));
    QCOMPARE(items[0][u"peer"_s].toString(), u"bob"_s);
    QCOMPARE(items[1][u"peer"_s].toString(), u"carol"_s);
    QCOMPARE(texts(ApiFixture::array(fixture.get("/api/chat/conversations", bob))), QStringList{u"3"_s});
}

void TestChat::messageToOneself()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    QCOMPARE(fixture.post("/api/chat/send", plainMessage(u"alice"_s, u"note"_s), alice).status, 201);
    QCOMPARE(texts(historyOf(fixture, "alice", alice)), QStringList{u"note"_s});
    const QJsonArray items = ApiFixture::array(fixture.get("/api/chat/conversations", alice));
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0][u"peer"_s].toString(), u"alice"_s);
}

void TestChat::refusedMessageLeavesNothing()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    QJsonObject body = sealedMessage(u"bob"_s);
    body.insert(u"iv"_s, base64(8));
    QCOMPARE(fixture.post("/api/chat/send", body, alice).status, 400);
    QCOMPARE(fixture.get("/api/chat/conversations", alice).body, QByteArray("[]"));
}

void TestChat::textIsOnlyText()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    const QString text = u"'); DROP TABLE messages; -- \" % _ \\ \n 😀"_s + QChar(0) + u"end"_s;
    QCOMPARE(fixture.post("/api/chat/send", plainMessage(u"bob"_s, text), alice).status, 201);
    QCOMPARE(texts(historyOf(fixture, "bob", alice)), QStringList{text});
}

// A client that got no answer sends the same again, as its network library does by itself.
void TestChat::messageThatComesTwiceIsThereOnce()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    const Response first = fixture.post("/api/chat/send", sealedMessage(u"bob"_s), alice);
    fixture.now = fixture.now.addSecs(5);
    const Response second = fixture.post("/api/chat/send", sealedMessage(u"bob"_s), alice);
    QCOMPARE(second.status, first.status);
    QCOMPARE(second.body, first.body);
    QCOMPARE(historyOf(fixture, "bob", alice).size(), 1);
    QCOMPARE(historyOf(fixture, "bob", alice)[0][u"createdAt"_s].toString(), u"2026-05-04T10:00:00.007Z"_s);
}

TIDELOFT_TEST_MAIN(TestChat)
#include "tst_chat_handlers.moc"
