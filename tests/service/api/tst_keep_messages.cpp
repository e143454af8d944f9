// A service that forgets old messages while people talk.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestKeepMessages : public QObject
{
    Q_OBJECT

private slots:
    void oldMessagesAreForgotten();
    void foreverIsForever();
    void clockThatJumpsForgetsNothing();

private:
    static std::function<void(ApiSettings &)> days(int count)
    {
        return [count](ApiSettings &settings) { settings.keepMessagesDays = count; };
    }
    static void store(ApiFixture &fixture, int daysAgo)
    {
        const QString columns =
            u"sender_id, recipient_id, text, iv, recipient_keys, sender_keys, encrypted"_s;
        const qint64 day = qint64{24} * 60 * 60 * 1000;
        Transaction transaction(fixture.database);
        const qint64 added = fixture.database.number(
            u"INSERT INTO messages (%1, created_at) VALUES (1, 2, 'x', '', '[]', '[]', 0, ?) RETURNING id"_s
                .arg(columns),
            {fixture.now.toMSecsSinceEpoch() - daysAgo * day});
        for (const auto &[user, peer] : {std::pair{1, 2}, std::pair{2, 1}})
            fixture.database.run(u"INSERT INTO conversations (user_id, peer_id, last_message_id, version)"
                                 " VALUES (?, ?, ?, 7) ON CONFLICT (user_id, peer_id)"
                                 " DO UPDATE SET last_message_id = excluded.last_message_id"_s,
                                 {user, peer, added});
        transaction.commit();
    }
    static qint64 messages(ApiFixture &fixture)
    {
        return fixture.database.number(u"SELECT count(*) FROM messages"_s);
    }
};

void TestKeepMessages::oldMessagesAreForgotten()
{
    ApiFixture fixture(days(30));
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    store(fixture, 29);
    const Response before = fixture.get("/api/chat/history/bob", alice);
    store(fixture, 31);
    QTRY_COMPARE(messages(fixture), 1);
    const QJsonArray history = ApiFixture::array(fixture.get("/api/chat/history/bob", alice));
    QCOMPARE(history, ApiFixture::array(before));
    QCOMPARE(ApiFixture::array(fixture.get("/api/chat/conversations", alice)).size(), 1);
}

void TestKeepMessages::foreverIsForever()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    store(fixture, 10'000);
    for (int i = 0; i < 100; ++i) // between which the writer would look for old messages
        QCOMPARE(fixture.post("/api/profile/update", {{u"bio"_s, QString::number(i)}}, alice).status, 200);
    QCOMPARE(messages(fixture), 1);
}

void TestKeepMessages::clockThatJumpsForgetsNothing()
{
    ApiFixture fixture(days(30));
    fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    fixture.jump = 40;
    store(fixture, 29);
    store(fixture, 31); // goes, so the other one was looked at too
    QTRY_COMPARE(messages(fixture), 1);
}

TIDELOFT_TEST_MAIN(TestKeepMessages)
#include "tst_keep_messages.moc"
