// Finding the items of a reply in the one before.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"
#include "ui/messages/known_items.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

QJsonArray items(const QString &names)
{
    QJsonArray array;
    for (const QChar name : names)
        array.append(QJsonObject{{u"peer"_s, QString(name)}});
    return array;
}

} // namespace

class TestKnownItems : public QObject
{
    Q_OBJECT

private slots:
    void known_data();
    void known();
    void equalNamesAreToldApart();
    void manyEqualNamesAreNotAllComparedWithAll();
    void foundItemsAreEqualAndFoundOnce();
    void otherTermsAreAnotherKey();
};

void TestKnownItems::known_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QList<qsizetype>>("expected");
    const auto row = [](const char *name, const QString &before, const QString &now,
                        const QList<qsizetype> &expected) {
        QTest::newRow(name) << before << now << expected;
    };
    row("nothing before", {}, u"ab"_s, {-1, -1});
    row("nothing now", u"ab"_s, {}, {});
    row("the same", u"abc"_s, u"abc"_s, {0, 1, 2});
    row("one more in front", u"abc"_s, u"xabc"_s, {-1, 0, 1, 2});
    row("one more at the end", u"abc"_s, u"abcx"_s, {0, 1, 2, -1});
    row("one to the front", u"abcd"_s, u"cabd"_s, {2, 0, 1, 3});
    row("another instead", u"abc"_s, u"axc"_s, {0, -1, 2});
    row("backwards", u"abc"_s, u"cba"_s, {2, 1, 0});
    row("one gone", u"abc"_s, u"ac"_s, {0, 2});
    row("twice where there was one", u"ab"_s, u"aab"_s, {0, -1, 1});
}

void TestKnownItems::known()
{
    QFETCH(const QString, before);
    QFETCH(const QString, now);
    QTEST(knownItems(items(before), items(now), u"peer"_s), "expected");
}

void TestKnownItems::equalNamesAreToldApart()
{
    const QJsonObject one{{u"peer"_s, u"a"_s}, {u"text"_s, u"1"_s}};
    const QJsonObject two{{u"peer"_s, u"a"_s}, {u"text"_s, u"2"_s}};
    QCOMPARE(knownItems({one, two}, {two, one}, u"peer"_s), QList<qsizetype>({1, 0}));
}

void TestKnownItems::manyEqualNamesAreNotAllComparedWithAll()
{
    constexpr int count = 50'000;
    QJsonArray before;
    QJsonArray now;
    for (int i = 0; i < count; ++i) {
        before.append(QJsonObject{{u"peer"_s, u"a"_s}, {u"text"_s, i}});
        now.append(QJsonObject{{u"peer"_s, u"a"_s}, {u"text"_s, -1 - i}});
    }
    QCOMPARE(knownItems(before, now, u"peer"_s), QList<qsizetype>(count, -1)); // or it would take minutes
}

void TestKnownItems::foundItemsAreEqualAndFoundOnce()
{
    QRandomGenerator random(1);
    for (int round = 0; round < tideloft::tests::rounds(300, 30'000); ++round) {
        const auto reply = [&random] {
            QString names;
            for (int i = random.bounded(12); i > 0; --i)
                names.append(QChar(u'a' + random.bounded(6)));
            return items(names);
        };
        const QJsonArray before = reply();
        const QJsonArray now = reply();
        const QList<qsizetype> known = knownItems(before, now, u"peer"_s);
        QCOMPARE(known.size(), now.size());
        QSet<qsizetype> found;
        for (qsizetype i = 0; i < known.size(); ++i) {
            if (known.at(i) < 0)
                continue;
            QCOMPARE(before.at(known.at(i)), now.at(i));
            QVERIFY(!found.contains(known.at(i)));
            found.insert(known.at(i));
        }
    }
}

void TestKnownItems::otherTermsAreAnotherKey()
{
    const Reading reading{u"alice"_s, {}, QDateTime(QDate(2024, 5, 17), QTime(12, 0)), Language::English};
    Reading another = reading;
    QCOMPARE(readingKey(another, 1), readingKey(reading, 1));
    QVERIFY(readingKey(reading, 2) != readingKey(reading, 1));
    another.language = Language::Swedish;
    QVERIFY(readingKey(another, 1) != readingKey(reading, 1));
    another = reading;
    another.ownName = u"eve"_s;
    QVERIFY(readingKey(another, 1) != readingKey(reading, 1));
    another = reading;
    another.now.setTimeZone(QTimeZone(7'200));
    QVERIFY(readingKey(another, 1) != readingKey(reading, 1));
}

TIDELOFT_TEST_MAIN(TestKnownItems)
#include "tst_known_items.moc"
