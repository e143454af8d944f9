// A history that is read again and again: the same records as afresh, but only what is new is opened.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "tests/ui/messages/read_messages.h"
#include "ui/messages/history_cache.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using namespace tideloft::tests;

namespace
{

QJsonObject item(const QString &text, bool isEncrypted = true)
{
    return {{u"from"_s, u"bob"_s},
            {u"encrypted"_s, isEncrypted},
            {u"text"_s, text},
            {u"createdAt"_s, u"2024-05-17T10:00:00Z"_s}};
}

QJsonArray items(const QStringList &texts)
{
    QJsonArray array;
    for (const QString &text : texts)
        array.append(item(text));
    return array;
}

} // namespace

class TestHistoryCache : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void unchangedItemsAreOpenedOnce();
    void onlyWhatIsNewIsOpened_data();
    void onlyWhatIsNewIsOpened();
    void equalItemsOfAnotherReplyAreKnown();
    void failureIsRemembered();
    void failureIsTriedAgainUnderOtherTerms();
    void messageWithoutTimeGetsTheNewMinute();
    void onlyObjectsCount();
    void otherTermsReadAfresh_data();
    void otherTermsReadAfresh();
    void forgetsWhenTold();
    void nothingIsOpenedBeforeItIsLookedAt();
    void movedItemsAreKnown();
    void whatIsForgottenStaysClosed();

private:
    QList<DisplayRecord> read(const QJsonArray &array);

    HistoryCache history;
    QStringList opened;
    QString unopenable;
    Reading reading;
    quint64 readGeneration = 1;
};

void TestHistoryCache::init()
{
    tideloft::tests::setLocalZone(tideloft::tests::stockholm);
    history = {};
    opened.clear();
    unopenable.clear();
    readGeneration = 1;
    const auto open = [this](const QJsonObject &object) {
        const QString text = object.value(u"text"_s).toString();
        opened.append(text);
        return text == unopenable ? QString() : u"opened "_s + text;
    };
    reading = {u"alice"_s, open, noon(), Language::English};
}

// Whatever is remembered, the records are those that are read afresh.
QList<DisplayRecord> TestHistoryCache::read(const QJsonArray &array)
{
    const QList<DisplayRecord> records = history.records(array, reading, readGeneration);
    const QList<DisplayRecord> afresh = displayRecords(array, reading);
    for (const DisplayRecord &record : records)
        (void)record.text.value();
    const QStringList openedNow = opened;
    for (const DisplayRecord &record : afresh)
        (void)record.text.value();
    if (records != afresh)
        return {};
    opened = openedNow;
    return records;
}

void TestHistoryCache::unchangedItemsAreOpenedOnce()
{
    const QJsonArray array = items({u"a"_s, u"b"_s});
    QCOMPARE(read(array).size(), 2);
    QCOMPARE(read(array).value(1).text.value(), u"opened b"_s);
    QCOMPARE(opened, QStringList({u"a"_s, u"b"_s}));
}

void TestHistoryCache::onlyWhatIsNewIsOpened_data()
{
    QTest::addColumn<QStringList>("now");
    QTest::addColumn<QString>("opened");
    const auto row = [](const char *name, const QString &now, const QString &newlyOpened) {
        QTest::newRow(name) << now.split(u' ') << newlyOpened;
    };
    row("at the end", u"a b c d"_s, u"d"_s);
    row("in front", u"z a b c"_s, u"z"_s);
    row("in between", u"a x b c"_s, u"x"_s);
    row("instead of another", u"a x c"_s, u"x"_s);
    row("gone in front", u"b c"_s, QString());
    row("gone at the end", u"a b"_s, QString());
    row("gone in between", u"a c"_s, QString());
    row("the same once more", u"a b c c"_s, u"c"_s);
}

void TestHistoryCache::onlyWhatIsNewIsOpened()
{
    QFETCH(const QStringList, now);
    read(items({u"a"_s, u"b"_s, u"c"_s}));
    opened.clear();
    QCOMPARE(read(items(now)).size(), now.size());
    QTEST(opened.join(u' '), "opened");
}

void TestHistoryCache::equalItemsOfAnotherReplyAreKnown()
{
    const QByteArray json = QJsonDocument(items({u"a"_s, u"b"_s})).toJson();
    read(parsed(json));
    read(parsed(json));
    QCOMPARE(opened.size(), 2);
}

void TestHistoryCache::failureIsRemembered()
{
    unopenable = u"b"_s;
    for (int reply = 0; reply < 2; ++reply)
        QCOMPARE(read(items({u"a"_s, u"b"_s})).value(1).text.value(), u"🔒 Message could not be displayed"_s);
    QCOMPARE(opened, QStringList({u"a"_s, u"b"_s}));
    QCOMPARE(read(items({u"a"_s, u"b"_s, u"c"_s})).value(1).text.value(),
             u"🔒 Message could not be displayed"_s);
    QCOMPARE(opened, QStringList({u"a"_s, u"b"_s, u"c"_s}));
}

// A key file that appeared, for instance.
void TestHistoryCache::failureIsTriedAgainUnderOtherTerms()
{
    unopenable = u"b"_s;
    read(items({u"b"_s}));
    unopenable.clear();
    ++readGeneration;
    QCOMPARE(read(items({u"b"_s})).value(0).text.value(), u"opened b"_s);
}

void TestHistoryCache::messageWithoutTimeGetsTheNewMinute()
{
    const QJsonArray array = parsed(R"([{"from":"bob","text":"x"}])");
    QCOMPARE(read(array).value(0).time, noon());
    reading.now = noon().addSecs(60);
    QCOMPARE(read(array).value(0).time, noon().addSecs(60));
}

void TestHistoryCache::onlyObjectsCount()
{
    const QJsonArray array = parsed(R"([1,{"text":"a"},null,[],{"text":"b"},"c"])");
    for (int reply = 0; reply < 2; ++reply)
        QCOMPARE(read(array).size(), 2);
}

void TestHistoryCache::otherTermsReadAfresh_data()
{
    QTest::addColumn<QString>("ownName");
    QTest::addColumn<Language>("language");
    QTest::addColumn<quint64>("generation");
    QTest::addColumn<QByteArray>("zone");
    const QByteArray stockholm = tideloft::tests::stockholm;
    QTest::newRow("other user") << u"bob"_s << Language::English << quint64(1) << stockholm;
    QTest::newRow("other language") << u"alice"_s << Language::Swedish << quint64(1) << stockholm;
    QTest::newRow("other key") << u"alice"_s << Language::English << quint64(2) << stockholm;
    QTest::newRow("other zone") << u"alice"_s << Language::English << quint64(1) << QByteArray("UTC");
    QTest::newRow("other zone with the same offset now")
        << u"alice"_s << Language::English << quint64(1) << QByteArray("EET-2");
}

void TestHistoryCache::otherTermsReadAfresh()
{
    QFETCH(const QString, ownName);
    QFETCH(const Language, language);
    QFETCH(const quint64, generation);
    QFETCH(const QByteArray, zone);
    const QJsonArray array = items({u"a"_s});
    QCOMPARE(read(array).size(), 1);
    tideloft::tests::setLocalZone(zone.constData());
    reading.ownName = ownName;
    reading.language = language;
    reading.now = noon();
    readGeneration = generation;
    QCOMPARE(read(array).size(), 1);
    QCOMPARE(opened.size(), 2);
}

void TestHistoryCache::forgetsWhenTold()
{
    read(items({u"a"_s}));
    history.forget();
    read(items({u"a"_s}));
    QCOMPARE(opened.size(), 2);
}

void TestHistoryCache::nothingIsOpenedBeforeItIsLookedAt()
{
    const QList<DisplayRecord> before = history.records(items({u"a"_s, u"b"_s}), reading, 1);
    QCOMPARE(before.value(1).text.value(), u"opened b"_s);
    QCOMPARE(opened, QStringList{u"b"_s});
    const QList<DisplayRecord> now = history.records(items({u"a"_s, u"b"_s, u"c"_s}), reading, 1);
    QCOMPARE(now.value(0).text, before.value(0).text);
    QVERIFY(now.value(1).text.isOpen());
    QCOMPARE(opened, QStringList{u"b"_s});
}

void TestHistoryCache::movedItemsAreKnown()
{
    read(items({u"a"_s, u"b"_s, u"b"_s, u"c"_s}));
    opened.clear();
    QCOMPARE(read(items({u"c"_s, u"b"_s, u"a"_s, u"b"_s})).size(), 4);
    QCOMPARE(opened, QStringList());
}

void TestHistoryCache::whatIsForgottenStaysClosed()
{
    QJsonArray array = items({u"a"_s, u"b"_s});
    array.append(QJsonObject{{u"from"_s, u"bob"_s}, {u"text"_s, u"never sealed"_s}});
    const QList<DisplayRecord> three = history.records(array, reading, 1);
    QCOMPARE(three.value(0).text.value(), u"opened a"_s);
    history.forget();
    QCOMPARE(three.value(0).text.value(), u"opened a"_s);
    QCOMPARE(three.value(1).text.value(), u"🔒 Message could not be displayed"_s);
    QCOMPARE(three.value(2).text.value(), u"never sealed"_s);
    QCOMPARE(opened, QStringList{u"a"_s});
}

TIDELOFT_TEST_MAIN(TestHistoryCache)
#include "tst_history_cache.moc"
