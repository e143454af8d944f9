// Conversations that are read again and again: the same rows as afresh, but what is known is not read again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "ui/lists/bounded_rows.h"
#include "ui/messages/conversation_cache.h"

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

QJsonObject item(const QString &peer, const QString &text)
{
    return {{u"peer"_s, peer},
            {u"encrypted"_s, true},
            {u"text"_s, text},
            {u"createdAt"_s, u"2024-05-17T10:00:00Z"_s}};
}

} // namespace

class TestConversationCache : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void unchangedItemsAreOpenedOnce();
    void movedItemsAreKnown();
    void changedItemIsReadAnew();
    void timesFollowTheDay();
    void otherTermsReadAfresh_data();
    void otherTermsReadAfresh();
    void whatIsForgottenStaysClosed();
    void onlyItemsWithPeersCount();

private:
    QList<ConversationRowModel> read(const QJsonArray &items);
    QStringList previews(const QJsonArray &items);

    ConversationCache cache;
    QStringList opened;
    Reading reading;
    quint64 generation = 1;
};

void TestConversationCache::init()
{
    tideloft::tests::setLocalZone(tideloft::tests::stockholm);
    cache = {};
    opened.clear();
    generation = 1;
    const auto open = [this](const QJsonObject &object) {
        opened.append(object.value(u"text"_s).toString());
        return u"opened "_s + opened.last();
    };
    reading = {u"alice"_s, open, QDateTime(QDate(2024, 5, 17), QTime(12, 30)), Language::English};
}

QList<ConversationRowModel> TestConversationCache::read(const QJsonArray &items)
{
    return cache.rows(items, reading, generation);
}

QStringList TestConversationCache::previews(const QJsonArray &items)
{
    QStringList texts;
    for (const ConversationRowModel &row : read(items))
        texts.append(row.peer + u' ' + row.preview.value() + u' ' + row.time.value());
    return texts;
}

void TestConversationCache::unchangedItemsAreOpenedOnce()
{
    const QJsonArray items{item(u"bob"_s, u"1"_s), item(u"eve"_s, u"2"_s)};
    const QStringList shown{u"bob opened 1 12:00"_s, u"eve opened 2 12:00"_s};
    QCOMPARE(previews(items), shown);
    QCOMPARE(previews(items), shown);
    QCOMPARE(opened, QStringList({u"1"_s, u"2"_s}));
}

void TestConversationCache::movedItemsAreKnown()
{
    const QJsonObject bob = item(u"bob"_s, u"1"_s);
    const QJsonObject eve = item(u"eve"_s, u"2"_s);
    const QJsonObject mia = item(u"mia"_s, u"3"_s);
    const QList<ConversationRowModel> before = read({bob, eve, mia});
    const QList<ConversationRowModel> now = read({mia, bob, eve});
    QCOMPARE(now.at(0), before.at(2)); // not opened: the very same
    QCOMPARE(now.at(1), before.at(0));
    QVERIFY(opened.isEmpty());
}

void TestConversationCache::changedItemIsReadAnew()
{
    (void)previews({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"2"_s)});
    opened.clear();
    QCOMPARE(previews({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"3"_s)}).constLast(), u"eve opened 3 12:00"_s);
    QCOMPARE(opened, QStringList{u"3"_s});
}

void TestConversationCache::timesFollowTheDay()
{
    const QJsonArray items{item(u"bob"_s, u"1"_s)};
    QCOMPARE(read(items).constFirst().time.value(), u"12:00"_s);
    reading.now = reading.now.addDays(1);
    QCOMPARE(read(items).constFirst().time.value(), QLocale().toString(QDate(2024, 5, 17), u"d MMM"_s));
}

void TestConversationCache::otherTermsReadAfresh_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"key file", "language", "user"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void TestConversationCache::otherTermsReadAfresh()
{
    QFETCH(const QString, what);
    const QJsonArray items{item(u"bob"_s, u"1"_s)};
    (void)previews(items);
    if (what == u"key file"_s)
        ++generation;
    else if (what == u"language"_s)
        reading.language = Language::Swedish;
    else
        reading.ownName = u"eve"_s;
    (void)previews(items);
    QCOMPARE(opened, QStringList({u"1"_s, u"1"_s}));
}

void TestConversationCache::whatIsForgottenStaysClosed()
{
    const QJsonObject plain{{u"peer"_s, u"mia"_s}, {u"text"_s, u"never sealed"_s}};
    const QList<ConversationRowModel> rows = read({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"2"_s), plain});
    QCOMPARE(rows.at(0).preview.value(), u"opened 1"_s);
    cache.forget();
    QCOMPARE(rows.at(0).preview.value(), u"opened 1"_s);
    QCOMPARE(rows.at(1).preview.value(), u"🔒 Encrypted message"_s);
    QCOMPARE(rows.at(1).time.value(), u"12:00"_s);
    QCOMPARE(rows.at(2).preview.value(), u"never sealed"_s);
    QCOMPARE(opened, QStringList{u"1"_s});
}

void TestConversationCache::onlyItemsWithPeersCount()
{
    QJsonArray items{42, QJsonObject()};
    for (int i = 0; i < conversationsLimit + 5; ++i)
        items.append(QJsonObject{{u"peer"_s, u"peer-%1"_s.arg(i)}});
    for (int reply = 0; reply < 2; ++reply) {
        const QList<ConversationRowModel> rows = read(items);
        QCOMPARE(rows.size(), conversationsLimit);
        QCOMPARE(rows.first().peer, u"peer-0"_s);
        QCOMPARE(rows.last().peer, u"peer-%1"_s.arg(conversationsLimit - 1));
    }
    items.removeFirst();
    items.removeAt(1);
    items.removeAt(1); // two that were beyond the limit come up
    const QList<ConversationRowModel> rows = read(items);
    QCOMPARE(rows.size(), conversationsLimit);
    QCOMPARE(rows.last().peer, u"peer-%1"_s.arg(conversationsLimit + 1));
}

TIDELOFT_TEST_MAIN(TestConversationCache)
#include "tst_conversation_cache.moc"
