// A whole history as rows: separators, names and times where they belong.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "ui/messages/history_row_models.h"

#include <QJsonDocument>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

QString described(const DaySeparatorModel &separator)
{
    return u"--- "_s + separator.label;
}

// "single <bob> text @12:00", without what is not shown; own messages begin with "my".
QString described(const MessageRowModel &message)
{
    static const QStringList names{u"single"_s, u"first"_s, u"middle"_s, u"last"_s};
    QStringList parts{names.at(static_cast<int>(message.position))};
    if (message.isMine)
        parts.prepend(u"my"_s);
    if (!message.sender.isEmpty())
        parts.append(u'<' + message.sender + u'>');
    parts.append(message.text.value());
    if (!message.time.isEmpty())
        parts.append(u'@' + message.time);
    return parts.join(u' ');
}

QStringList described(const QList<HistoryRow> &rows)
{
    QStringList lines;
    for (const HistoryRow &row : rows)
        lines.append(std::visit([](const auto &model) { return described(model); }, row));
    return lines;
}

// Rows as they read at noon of 17 May 2024, to alice.
QStringList shown(const QByteArray &items, Language language = Language::English)
{
    const QDateTime now(QDate(2024, 5, 17), QTime(12, 0));
    const auto closed = [](const QJsonObject &) { return QString(); };
    const auto records =
        displayRecords(QJsonDocument::fromJson(items).array(), {u"alice"_s, closed, now, language});
    return described(historyRows(records, now.date(), language));
}

// An item with its local date and time.
QByteArray item(const char *from, const char *text, const char *createdAt)
{
    return QByteArray(R"({"from":")") + from + R"(","text":")" + text + R"(","createdAt":")" + createdAt
           + R"("})";
}

QByteArray history(const QByteArrayList &items)
{
    return '[' + items.join(',') + ']';
}

} // namespace

class TestHistoryRowModels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rows_data();
    void rows();
    void separatorsInSwedish();
    void startOfAGroup_data();
    void startOfAGroup();

private:
    void addGroupRows();
    void addSeparatorRows();
    void addUnreadableRows();
};

void TestHistoryRowModels::initTestCase()
{
    tideloft::tests::setLocalZone(tideloft::tests::stockholm);
    QLocale::setDefault(QLocale(QLocale::English));
}

void TestHistoryRowModels::rows_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("an empty history has no row") << history({}) << QStringList{};
    addGroupRows();
    addSeparatorRows();
    addUnreadableRows();
}

void TestHistoryRowModels::addGroupRows()
{
    QTest::newRow("three a minute apart: name first, time last")
        << history({item("bob", "a", "2024-05-17T10:00:00"), item("bob", "b", "2024-05-17T10:01:00"),
                    item("bob", "c", "2024-05-17T10:02:00")})
        << QStringList{u"--- Today"_s, u"first <bob> a"_s, u"middle b"_s, u"last c @10:02"_s};
    QTest::newRow("a single message has both") << history({item("bob", "a", "2024-05-17T10:00:00")})
                                               << QStringList{u"--- Today"_s, u"single <bob> a @10:00"_s};
    QTest::newRow("own messages never show a name")
        << history({item("alice", "a", "2024-05-17T10:00:00"), item("alice", "b", "2024-05-17T10:01:00"),
                    item("bob", "c", "2024-05-17T10:01:30"), item("alice", "d", "2024-05-17T10:01:40")})
        << QStringList{u"--- Today"_s, u"my first a"_s, u"my last b @10:01"_s, u"single <bob> c @10:01"_s,
                       u"my single d @10:01"_s};
    QTest::newRow("own name in three spellings is one group of own messages")
        << history({item("Alice", "a", "2024-05-17T10:00:00"), item("aLICE", "b", "2024-05-17T10:01:00")})
        << QStringList{u"--- Today"_s, u"my first a"_s, u"my last b @10:01"_s};
    QTest::newRow("a capital letter does not part a group")
        << history({item("Bob", "a", "2024-05-17T10:00:00"), item("bob", "b", "2024-05-17T10:01:00")})
        << QStringList{u"--- Today"_s, u"first <Bob> a"_s, u"last b @10:01"_s};
    QTest::newRow("300 s part, 299 s do not")
        << history({item("bob", "a", "2024-05-17T10:00:00"), item("bob", "b", "2024-05-17T10:05:00"),
                    item("bob", "c", "2024-05-17T10:09:59")})
        << QStringList{u"--- Today"_s, u"single <bob> a @10:00"_s, u"first <bob> b"_s, u"last c @10:09"_s};
}

void TestHistoryRowModels::addSeparatorRows()
{
    QTest::newRow("one separator for each day")
        << history({item("bob", "a", "2023-12-24T10:00:00"), item("bob", "b", "2023-12-24T20:00:00"),
                    item("bob", "c", "2024-05-16T10:00:00"), item("bob", "d", "2024-05-17T10:00:00")})
        << QStringList{u"--- 24 December 2023"_s, u"single <bob> a @10:00"_s, u"single <bob> b @20:00"_s,
                       u"--- Yesterday"_s,        u"single <bob> c @10:00"_s, u"--- Today"_s,
                       u"single <bob> d @10:00"_s};
    QTest::newRow("23:59 and 00:01: separator, then the last of its group")
        << history({item("bob", "a", "2024-05-16T23:59:00"), item("bob", "b", "2024-05-17T00:01:00")})
        << QStringList{u"--- Yesterday"_s, u"single <bob> a @23:59"_s, u"--- Today"_s, u"last b @00:01"_s};
    QTest::newRow("the day turns at local midnight")
        << history({item("bob", "a", "2024-05-16T21:59:59Z"), item("bob", "b", "2024-05-16T22:00:00Z")})
        << QStringList{u"--- Yesterday"_s, u"single <bob> a @23:59"_s, u"--- Today"_s, u"last b @00:00"_s};
    QTest::newRow("a day that comes again gets its separator again")
        << history({item("bob", "a", "2024-05-17T10:00:00"), item("eve", "b", "2024-05-16T10:00:00"),
                    item("bob", "c", "2024-05-17T10:00:00")})
        << QStringList{u"--- Today"_s,     u"single <bob> a @10:00"_s,
                       u"--- Yesterday"_s, u"single <eve> b @10:00"_s,
                       u"--- Today"_s,     u"single <bob> c @10:00"_s};
    QTest::newRow("a message without createdAt stands under Today")
        << QByteArray(R"([{"from":"bob","text":"a"}])")
        << QStringList{u"--- Today"_s, u"single <bob> a @12:00"_s};
}

void TestHistoryRowModels::addUnreadableRows()
{
    QTest::newRow("unreadable first: no separator, no time")
        << history({item("bob", "a", "soon")}) << QStringList{u"single <bob> a"_s};
    QTest::newRow("unreadable first, then a dated one that joins it")
        << history({item("bob", "a", "soon"), item("bob", "b", "2024-05-17T10:00:00")})
        << QStringList{u"single <bob> a"_s, u"--- Today"_s, u"last b @10:00"_s};
    QTest::newRow("unreadable after a dated one: empty separator, joins it")
        << history({item("bob", "a", "2024-05-17T10:00:00"), item("bob", "b", "soon")})
        << QStringList{u"--- Today"_s, u"single <bob> a @10:00"_s, u"--- "_s, u"last b"_s};
    QTest::newRow("unreadable between two dated ones of another sender")
        << history({item("bob", "a", "2024-05-17T10:00:00"), item("eve", "b", "soon"),
                    item("bob", "c", "2024-05-17T10:01:00")})
        << QStringList{u"--- Today"_s, u"single <bob> a @10:00"_s, u"--- "_s, u"single <eve> b"_s,
                       u"--- Today"_s, u"single <bob> c @10:01"_s};
    QTest::newRow("an envelope that does not open is a row like others")
        << QByteArray(R"([{"from":"bob","encrypted":true,"text":"x","createdAt":"2024-05-17T10:00:00"}])")
        << QStringList{u"--- Today"_s, u"single <bob> 🔒 Message could not be displayed @10:00"_s};
}

void TestHistoryRowModels::rows()
{
    QFETCH(const QByteArray, items);
    QFETCH(const QStringList, expected);
    QCOMPARE(shown(items), expected);
}

void TestHistoryRowModels::separatorsInSwedish()
{
    const QByteArray items =
        history({item("bob", "a", "2024-05-16T10:00:00"), item("bob", "b", "2024-05-17T10:00:00")});
    QCOMPARE(shown(items, Language::Swedish), (QStringList{u"--- Igår"_s, u"single <bob> a @10:00"_s,
                                                           u"--- Idag"_s, u"single <bob> b @10:00"_s}));
}

void TestHistoryRowModels::startOfAGroup_data()
{
    QTest::addColumn<GroupPosition>("position");
    QTest::addColumn<bool>("starts");
    QTest::newRow("single") << GroupPosition::Single << true;
    QTest::newRow("first") << GroupPosition::First << true;
    QTest::newRow("middle") << GroupPosition::Middle << false;
    QTest::newRow("last") << GroupPosition::Last << false;
}

void TestHistoryRowModels::startOfAGroup()
{
    QFETCH(const GroupPosition, position);
    QFETCH(const bool, starts);
    QCOMPARE((MessageRowModel{.isMine = false, .position = position}).startsGroup(), starts);
    QCOMPARE((MessageRowModel{.isMine = false, .position = position}).showsSender(), starts);
    QCOMPARE((MessageRowModel{.isMine = true, .position = position}).startsGroup(), starts);
    QVERIFY(!(MessageRowModel{.isMine = true, .position = position}).showsSender());
}

TIDELOFT_TEST_MAIN(TestHistoryRowModels)
#include "tst_history_row_models.moc"
