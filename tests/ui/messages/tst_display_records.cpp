// From history items to records: who, what, when, and whose.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/open_message.h"
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "tests/ui/messages/read_messages.h"
#include "ui/messages/display_records.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using namespace tideloft::tests;

namespace
{

const QString hiddenInSwedish = u"🔒 Meddelandet kunde inte visas"_s;
const QString hiddenInEnglish = u"🔒 Message could not be displayed"_s;

QList<DisplayRecord> records(const QByteArray &json, const QString &ownName = u"alice"_s)
{
    return displayRecords(parsed(json), {ownName, openItem, noon(), Language::English});
}

} // namespace

class TestDisplayRecords : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tideloft::tests::setLocalZone(tideloft::tests::stockholm); }
    void text_data();
    void text();
    void envelopeThatDoesNotOpenSaysSo();
    void envelopeForOtherDevicesSaysSo();
    void reasonIsKept();
    void otherReasonIsAnotherRecord();
    void envelopeIsHandedOverWhole();
    void plainMessageIsNotOpened();
    void mine_data();
    void mine();
    void onlyObjectsInTheirOrder();
    void senderIsTrimmed();
    void time();
    void emptyHistory();
};

void TestDisplayRecords::text_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *item, const QString &expected) {
        QTest::newRow(name) << QByteArray(item) << expected;
    };
    row("encrypted true is opened", R"({"encrypted":true,"text":"x"})", u"opened x"_s);
    row("encrypted 1 is opened", R"({"encrypted":1,"text":"x"})", u"opened x"_s);
    row("another number is opened", R"({"encrypted":-0.5,"text":"x"})", u"opened x"_s);
    row("encrypted false is plain", R"({"encrypted":false,"text":"x"})", u"x"_s);
    row("encrypted 0 is plain", R"({"encrypted":0,"text":"x"})", u"x"_s);
    row("the text true is plain", R"({"encrypted":"true","text":"x"})", u"x"_s);
    row("null is plain", R"({"encrypted":null,"text":"x"})", u"x"_s);
    row("an object is plain", R"({"encrypted":{"a":1},"text":"x"})", u"x"_s);
    row("without encrypted it is plain", R"({"text":"x"})", u"x"_s);
    row("plain text keeps its blanks", R"({"text":" x\n"})", u" x\n"_s);
    row("no text is an empty text", R"({})", {});
    row("a text that is none is empty", R"({"text":7})", {});
}

void TestDisplayRecords::text()
{
    QFETCH(const QByteArray, item);
    QFETCH(const QString, expected);
    const QList<DisplayRecord> one = records("[" + item + "]");
    QCOMPARE(one.size(), 1);
    QCOMPARE(one.constFirst().text.value(), expected);
}

void TestDisplayRecords::envelopeThatDoesNotOpenSaysSo()
{
    const QJsonArray items = parsed(R"([{"encrypted":true,"text":"x"},{"text":"plain"}])");
    const auto inSwedish = displayRecords(items, {u"alice"_s, openNothing, noon(), Language::Swedish});
    QCOMPARE(inSwedish.value(0).text.value(), hiddenInSwedish);
    QCOMPARE(inSwedish.value(1).text.value(), u"plain"_s); // the other messages are unaffected
    const auto inEnglish = displayRecords(items, {u"alice"_s, openNothing, noon(), Language::English});
    QCOMPARE(inEnglish.value(0).text.value(), hiddenInEnglish);
}

void TestDisplayRecords::reasonIsKept()
{
    const QJsonArray items = parsed(R"([{"encrypted":true,"text":"x"},{"text":""}])");
    const auto fail = [](const QJsonObject &) { return OpenedText({}, u"IV decode failed."_s); };
    const auto failed = displayRecords(items, {u"alice"_s, fail, noon(), Language::English});
    QCOMPARE(failed.value(0).text.reason(), u"IV decode failed."_s);
    QCOMPARE(failed.value(1).text.reason(), QString()); // not sealed
    const auto empty = displayRecords(items, {u"alice"_s, openNothing, noon(), Language::English});
    QCOMPARE(empty.value(0).text.reason(), u"The message is empty."_s);
    const auto opened = displayRecords(items, {u"alice"_s, openItem, noon(), Language::English});
    QCOMPARE(opened.value(0).text.reason(), QString());
}

// Else a refresh that fails for another reason would leave the row as it is.
void TestDisplayRecords::otherReasonIsAnotherRecord()
{
    const DisplayRecord one{.from = u"bob"_s, .text = {u"x"_s, u"this"_s}, .time = noon()};
    DisplayRecord other = one;
    QCOMPARE(other, one);
    other.text = {u"x"_s, u"that"_s};
    QVERIFY(!(other == one));
}

void TestDisplayRecords::envelopeForOtherDevicesSaysSo()
{
    const auto openHere = [](const QJsonObject &item) {
        return tideloft::crypto::decryptMessageText(item, u"alice"_s, u"this"_s);
    };
    const QJsonArray items = parsed(R"([{"from":"bob","encrypted":true,"text":"eA==","iv":"eA==",
                                         "recipientKeys":[{"deviceId":"other","encryptedKey":"eA=="}]}])");
    const auto one = displayRecords(items, {u"alice"_s, openHere, noon(), Language::English});
    QCOMPARE(one.size(), 1);
    QCOMPARE(one.constFirst().text.value(), hiddenInEnglish);
}

void TestDisplayRecords::envelopeIsHandedOverWhole()
{
    const QJsonArray items = parsed(R"([{"encrypted":true,"text":"x","iv":"i","from":" bob ",
                                         "senderKeys":[],"recipientKeys":[{"deviceId":"d"}]}])");
    QList<QJsonObject> seen;
    const auto remember = [&seen](const QJsonObject &item) {
        seen.append(item);
        return QString();
    };
    const auto one = displayRecords(items, {u"alice"_s, remember, noon(), Language::English});
    QVERIFY(seen.isEmpty()); // before somebody looks
    QVERIFY(!one.value(0).text.value().isEmpty());
    QVERIFY(!one.value(0).text.value().isEmpty()); // and once only
    QCOMPARE(seen, QList<QJsonObject>{items.at(0).toObject()});
}

void TestDisplayRecords::plainMessageIsNotOpened()
{
    int opened = 0;
    const auto count = [&opened](const QJsonObject &) { return QString::number(++opened); };
    const auto two = displayRecords(parsed(R"([{"text":"x"},{"encrypted":"true","text":"y"}])"),
                                    {u"alice"_s, count, noon(), Language::English});
    QCOMPARE(two.value(0).text.value() + two.value(1).text.value(), u"xy"_s);
    QCOMPARE(opened, 0);
}

void TestDisplayRecords::mine_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("ownName");
    QTest::addColumn<bool>("expected");
    QTest::newRow("the same name") << u"alice"_s << u"alice"_s << true;
    QTest::newRow("another name") << u"bob"_s << u"alice"_s << false;
    QTest::newRow("own name in capitals") << u"alice"_s << u"ALICE"_s << true;
    QTest::newRow("sender in capitals") << u"ALICE"_s << u"alice"_s << true;
    QTest::newRow("Swedish capitals") << u"Åsa"_s << u"åSA"_s << true;
    QTest::newRow("blanks around the sender") << u"  alice\t"_s << u"alice"_s << true;
    QTest::newRow("a longer name") << u"alice2"_s << u"alice"_s << false;
    QTest::newRow("no sender") << QString() << u"alice"_s << false;
}

void TestDisplayRecords::mine()
{
    QFETCH(const QString, from);
    QFETCH(const QString, ownName);
    QFETCH(const bool, expected);
    const QJsonArray items{QJsonObject{{u"from"_s, from}}};
    QCOMPARE(displayRecords(items, {ownName, openItem, noon(), Language::English}).value(0).isMine, expected);
}

void TestDisplayRecords::onlyObjectsInTheirOrder()
{
    const auto three = records(R"([{"text":"2"},"a",null,{"text":"1"},7,[{"text":"9"}],true,{"text":"3"}])");
    QStringList texts;
    for (const DisplayRecord &record : three)
        texts.append(record.text.value());
    QCOMPARE(texts, (QStringList{u"2"_s, u"1"_s, u"3"_s}));
}

void TestDisplayRecords::senderIsTrimmed()
{
    QCOMPARE(records(R"([{"from":"  Bob \n"}])").value(0).from, u"Bob"_s);
    QCOMPARE(records(R"([{"from":5}])").value(0).from, QString());
}

void TestDisplayRecords::time()
{
    const auto three = records(R"([{"createdAt":"2024-05-16T22:30:00Z"},{},{"createdAt":"?"}])");
    QCOMPARE(three.value(0).time, QDateTime(QDate(2024, 5, 17), QTime(0, 30)));
    QCOMPARE(three.value(0).time.date(), QDate(2024, 5, 17));
    QCOMPARE(three.value(1).time, noon());
    QVERIFY(!three.value(2).time.isValid());
}

void TestDisplayRecords::emptyHistory()
{
    QVERIFY(records("[]").isEmpty());
}

TIDELOFT_TEST_MAIN(TestDisplayRecords)
#include "tst_display_records.moc"
