// From conversation items to rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "tests/ui/messages/read_messages.h"
#include "ui/messages/conversation_row_models.h"

#include <QJsonDocument>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using namespace tideloft::tests;

namespace
{

QList<ConversationRowModel> rows(const QByteArray &json, const OpenMessage &opening = openItem,
                                 Language language = Language::English)
{
    const Reading reading{u"alice"_s, opening, QDateTime(QDate(2024, 5, 17), QTime(12, 0)), language};
    return conversationRows(parsed(json), reading);
}

} // namespace

class TestConversationRowModels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void peers_data();
    void peers();
    void preview_data();
    void preview();
    void envelopeThatDoesNotOpenSaysSo();
    void envelopeIsHandedOverWhole();
    void nothingIsReadBeforeItIsLookedAt();
    void plainPreviewIsNotOpened();
    void time_data();
    void time();
};

void TestConversationRowModels::initTestCase()
{
    tideloft::tests::setLocalZone(tideloft::tests::stockholm);
    QLocale::setDefault(QLocale(QLocale::English));
}

void TestConversationRowModels::peers_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *items, const QStringList &expected) {
        QTest::newRow(name) << QByteArray(items) << expected;
    };
    row("no conversation", "[]", {});
    row("the order of the reply stays", R"([{"peer":"c"},{"peer":"a"},{"peer":"b"}])",
        {u"c"_s, u"a"_s, u"b"_s});
    row("an item without peer gives no row", R"([{"text":"x"},{"peer":"a"}])", {u"a"_s});
    row("a peer of blanks gives no row", R"([{"peer":"  \t"},{"peer":""},{"peer":"a"}])", {u"a"_s});
    row("a peer that is no text gives no row", R"([{"peer":7},{"peer":null},{"peer":["a"]}])", {});
    row("blanks around are dropped", R"([{"peer":"  Bob "}])", {u"Bob"_s});
    row("what is no object gives no row", R"(["a",7,null,true,[{"peer":"x"}],{"peer":"a"}])", {u"a"_s});
    row("the same peer twice stays twice", R"([{"peer":"a"},{"peer":"a"}])", {u"a"_s, u"a"_s});
}

void TestConversationRowModels::peers()
{
    QFETCH(const QByteArray, items);
    QFETCH(const QStringList, expected);
    QStringList found;
    for (const ConversationRowModel &row : rows(items))
        found.append(row.peer);
    QCOMPARE(found, expected);
}

void TestConversationRowModels::preview_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const QString &expected) {
        QTest::newRow(name) << QByteArray(members) << expected;
    };
    row("encrypted true is opened", R"("encrypted":true,"text":"x")", u"opened x"_s);
    row("encrypted 1 is opened", R"("encrypted":1,"text":"x")", u"opened x"_s);
    row("encrypted false is plain", R"("encrypted":false,"text":"x")", u"x"_s);
    row("encrypted 0 is plain", R"("encrypted":0,"text":"x")", u"x"_s);
    row("the text true is plain", R"("encrypted":"true","text":"x")", u"x"_s);
    row("without encrypted it is plain", R"("text":"x")", u"x"_s);
    row("without text it is empty", R"("encrypted":false)", {});
    row("a text that is none is empty", R"("text":{})", {});
}

void TestConversationRowModels::preview()
{
    QFETCH(const QByteArray, members);
    QFETCH(const QString, expected);
    const ConversationRowModel row = rows(R"([{"peer":"bob",)" + members + "}]").value(0);
    QCOMPARE(row.peer, u"bob"_s);
    QCOMPARE(row.preview.value(), expected);
    QCOMPARE(row.time.value(), QString());
}

void TestConversationRowModels::envelopeThatDoesNotOpenSaysSo()
{
    const QByteArray items = R"([{"peer":"bob","encrypted":true,"text":"x"}])";
    QCOMPARE(rows(items, openNothing, Language::English).value(0).preview.value(), u"🔒 Encrypted message"_s);
    QCOMPARE(rows(items, openNothing, Language::Swedish).value(0).preview.value(),
             u"🔒 Krypterat meddelande"_s);
}

void TestConversationRowModels::envelopeIsHandedOverWhole()
{
    const QByteArray items = R"([{"peer":"bob","from":"alice","encrypted":true,"text":"x","iv":"i",
                                  "senderKeys":[{"deviceId":"d"}],"recipientKeys":[]}])";
    QList<QJsonObject> seen;
    const auto open = [&seen](const QJsonObject &item) {
        seen.append(item);
        return u"hello"_s;
    };
    QCOMPARE(rows(items, open).value(0).preview.value(), u"hello"_s);
    QCOMPARE(seen, QList<QJsonObject>{parsed(items).at(0).toObject()});
}

void TestConversationRowModels::nothingIsReadBeforeItIsLookedAt()
{
    int opened = 0;
    const auto open = [&opened](const QJsonObject &) { return QString::number(++opened); };
    const auto read = rows(R"([{"peer":"a","encrypted":true},{"peer":"b","encrypted":true}])", open);
    QCOMPARE(opened, 0);
    QVERIFY(!read.at(1).time.isOpen());
    QCOMPARE(read.at(1).preview.value(), u"1"_s);
    QCOMPARE(read.at(1).preview.value(), u"1"_s);
    QVERIFY(!read.at(0).preview.isOpen());
}

void TestConversationRowModels::plainPreviewIsNotOpened()
{
    int opened = 0;
    const auto open = [&opened](const QJsonObject &) { return QString::number(++opened); };
    QCOMPARE(rows(R"([{"peer":"bob","text":"x"}])", open).value(0).preview.value(), u"x"_s);
    QCOMPARE(opened, 0);
}

void TestConversationRowModels::time_data()
{
    QTest::addColumn<QByteArray>("createdAt");
    QTest::addColumn<QString>("expected");
    QTest::newRow("today") << QByteArray(R"("2024-05-17T06:05:00Z")") << u"08:05"_s;
    QTest::newRow("yesterday") << QByteArray(R"("2024-05-16T06:05:00Z")") << u"16 May"_s;
    QTest::newRow("another year") << QByteArray(R"("2022-05-17T06:05:00Z")") << u"17 May"_s;
    QTest::newRow("unreadable") << QByteArray(R"("soon")") << QString();
    QTest::newRow("null") << QByteArray("null") << QString();
}

void TestConversationRowModels::time()
{
    QFETCH(const QByteArray, createdAt);
    QFETCH(const QString, expected);
    QCOMPARE(rows(R"([{"peer":"bob","createdAt":)" + createdAt + "}]").value(0).time.value(), expected);
}

TIDELOFT_TEST_MAIN(TestConversationRowModels)
#include "tst_conversation_row_models.moc"
