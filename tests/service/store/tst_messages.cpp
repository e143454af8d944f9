// Which messages are kept, what they count for, and in which order they stand.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "service/store/retention.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

namespace
{

constexpr qint64 any = std::numeric_limits<qint64>::max();

StoredMessage sealed(const QString &text, const QString &nonce = {})
{
    return {text, nonce, u"[]"_s, u"[]"_s, true, 1};
}

} // namespace

class TestMessages : public QObject
{
    Q_OBJECT

private slots:
    void init() { store.reset(new StoreFixture); }
    void conversationsOfStrangersUseNoQuota();
    void answeringUsesNoQuota();
    void bytesAreThoseOfUtf8_data();
    void bytesAreThoseOfUtf8();
    void sameNonceAndTextIsKeptOnce();
    void nobodyWritesToADeletedUser();
    void onlyAnActiveAccountSends();
    void positionIsBehindAllOfBoth();
    void orderIsThatOfPositions();

private:
    Database &database() const { return store->database; }
    Stored send(const User &from, const User &to, const StoredMessage &message = sealed(u"x"_s),
                const MessageQuota &quota = {any, any, 2}) const
    {
        return storeMessage(database(), from, to, message, quota);
    }
    qint64 countedBytes() const
    {
        return database().number(u"SELECT message_bytes FROM users WHERE id = ?"_s, {store->alice.id});
    }

    QScopedPointer<StoreFixture> store;
};

void TestMessages::conversationsOfStrangersUseNoQuota()
{
    const User dave = store->add(u"dave"_s);
    for (const User &stranger : {store->bob, store->carol, dave})
        QCOMPARE(send(stranger, store->alice), Stored::Now);
    const User erin = store->add(u"erin"_s);
    QCOMPARE(send(store->alice, erin), Stored::Now);
    QCOMPARE(send(store->alice, store->alice), Stored::Now); // a note counts as any other
    QCOMPARE(send(store->alice, store->add(u"frank"_s)), Stored::TooManyConversations);
    QCOMPARE(send(store->alice, erin), Stored::Now); // one that there is goes on
}

void TestMessages::answeringUsesNoQuota()
{
    QCOMPARE(send(store->bob, store->alice), Stored::Now);
    QCOMPARE(send(store->alice, store->bob), Stored::Now);
    const MessageQuota one{any, any, 1};
    QCOMPARE(send(store->alice, store->carol, sealed(u"x"_s), one), Stored::Now);
    QCOMPARE(send(store->alice, store->add(u"dave"_s), sealed(u"x"_s), one), Stored::TooManyConversations);
}

void TestMessages::bytesAreThoseOfUtf8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("bytes");
    QTest::newRow("letters") << u"abc"_s << qint64{3};
    QTest::newRow("Swedish letters") << u"åäö"_s << qint64{6};
    QTest::newRow("emoji") << u"\U0001F44B"_s << qint64{4};
    QTest::newRow("behind a zero") << QString(u"a"_s + QChar(0) + u"bcd"_s) << qint64{5};
}

void TestMessages::bytesAreThoseOfUtf8()
{
    QFETCH(QString, text);
    QFETCH(qint64, bytes);
    const qint64 whole = bytes + 4; // and two empty lists of keys
    QCOMPARE(send(store->alice, store->bob, sealed(text), {any, whole - 1, 9}), Stored::TooManyBytes);
    QCOMPARE(send(store->alice, store->bob, sealed(text), {any, whole, 9}), Stored::Now);
    QCOMPARE(countedBytes(), whole);
    QCOMPARE(store->history(store->bob, store->alice), text.toUtf8());
    QCOMPARE(removeMessagesBefore(database(), 2, 9), 1);
    QCOMPARE(countedBytes(), 0); // as much as was added
}

void TestMessages::sameNonceAndTextIsKeptOnce()
{
    QCOMPARE(send(store->alice, store->bob, sealed(u"a"_s, u"n"_s)), Stored::Now);
    QCOMPARE(send(store->alice, store->bob, sealed(u"a"_s, u"n"_s)), Stored::Before);
    QCOMPARE(send(store->alice, store->bob, sealed(u"b"_s, u"n"_s)), Stored::Now);
    QCOMPARE(send(store->bob, store->alice, sealed(u"a"_s, u"n"_s)), Stored::Now);
    QCOMPARE(store->history(store->alice, store->bob), "a b a");
}

void TestMessages::nobodyWritesToADeletedUser()
{
    deleteUser(database(), store->bob);
    QCOMPARE(send(store->alice, store->bob), Stored::NoRecipient);
    QCOMPARE(store->conversations(store->alice), QByteArray());
}

void TestMessages::onlyAnActiveAccountSends()
{
    disableUser(database(), store->alice);
    QCOMPARE(send(store->alice, store->bob), Stored::NoSender);
    QCOMPARE(send(store->alice, store->alice), Stored::NoSender);
    QCOMPARE(store->conversations(store->bob), QByteArray());
    QCOMPARE(send(store->bob, store->alice), Stored::Now);
}

void TestMessages::positionIsBehindAllOfBoth()
{
    send(store->alice, store->bob);   // 1
    send(store->alice, store->bob);   // 2
    send(store->carol, store->bob);   // 3: bob has two already
    send(store->carol, store->alice); // 4
    QList<qint64> positions;
    Rows rows = database().run(u"SELECT position FROM messages ORDER BY id"_s);
    while (rows.next())
        positions << rows.value(0).toLongLong();
    QCOMPARE(positions, (QList<qint64>{1, 2, 3, 4}));
}

// Another storage may hand out numbers in any order, and older messages have no position.
void TestMessages::orderIsThatOfPositions()
{
    store->send(store->alice, store->bob, u"third"_s, 1);
    store->send(store->bob, store->alice, u"fourth"_s, 1);
    store->send(store->alice, store->bob, u"first"_s, 1);
    store->send(store->bob, store->alice, u"second"_s, 1);
    database().run(u"UPDATE messages SET position = 0 WHERE text IN ('first', 'second')"_s);
    QCOMPARE(store->history(store->bob, store->alice), "first second third fourth");
    store->send(store->carol, store->bob, u"last"_s, 1);
    database().run(u"UPDATE conversations SET last_message_id = 2 WHERE last_message_id = 4"_s);
    QCOMPARE(store->conversations(store->bob), "carol:last alice:fourth");
}

TIDELOFT_TEST_MAIN(TestMessages)
#include "tst_messages.moc"
