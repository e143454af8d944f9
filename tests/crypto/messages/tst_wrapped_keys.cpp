// Finding this device's wrapped key.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/wrapped_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

namespace
{

QJsonObject record(const QJsonValue &deviceId, const QJsonValue &encryptedKey)
{
    return {{u"deviceId"_s, deviceId}, {u"encryptedKey"_s, encryptedKey}};
}

} // namespace

class TestWrappedKeys : public QObject
{
    Q_OBJECT

private slots:
    void collectsUsableRecordsInOrder();
    void finds_data();
    void finds();
    void looksOnTheOwnSideOnly_data();
    void looksOnTheOwnSideOnly();
};

void TestWrappedKeys::collectsUsableRecordsInOrder()
{
    const QJsonArray records{
        record(u" B "_s, u"\tkey b\n"_s),
        u"a text"_s,
        7,
        QJsonValue(),
        QJsonArray{1},
        record(u"  "_s, u"key"_s),
        record(u"C"_s, u" "_s),
        record(7, u"key"_s),
        record(u"D"_s, true),
        QJsonObject{{u"deviceId"_s, u"E"_s}},
        QJsonObject{{u"encryptedKey"_s, u"key"_s}},
        record(u"a"_s, u"key a"_s),
        record(u"B"_s, u"another"_s),
    };
    const QList<WrappedKey> expected{{u"B"_s, u"key b"_s}, {u"a"_s, u"key a"_s}, {u"B"_s, u"another"_s}};
    QCOMPARE(collectWrappedKeys(records), expected);
    QVERIFY(collectWrappedKeys({}).isEmpty());
}

void TestWrappedKeys::finds_data()
{
    QTest::addColumn<QJsonArray>("records");
    QTest::addColumn<QString>("deviceId");
    QTest::addColumn<QString>("expected");
    const QJsonArray two{record(u"DEV-1"_s, u" one "_s), record(u"dev-2"_s, u"two"_s)};
    QTest::newRow("case and white space of the own identifier do not matter")
        << two << u" dev-1 "_s << u"one"_s;
    QTest::newRow("case of the record does not matter") << two << u"DEV-2"_s << u"two"_s;
    QTest::newRow("white space of the record does not matter")
        << QJsonArray{record(u"\tdev-1 "_s, u"one"_s)} << u"dev-1"_s << u"one"_s;
    QTest::newRow("first of equal ones wins")
        << QJsonArray{record(u"dev"_s, u"first"_s), record(u"DEV"_s, u"second"_s)} << u"dev"_s << u"first"_s;
    QTest::newRow("unusable record is passed over")
        << QJsonArray{record(u"dev"_s, u" "_s), record(u"dev"_s, u"second"_s)} << u"dev"_s << u"second"_s;
    QTest::newRow("other devices only") << two << u"dev-3"_s << QString();
    QTest::newRow("beginning of an identifier is no match") << two << u"dev"_s << QString();
    QTest::newRow("blank own identifier") << two << u"  "_s << QString();
    QTest::newRow("no records") << QJsonArray() << u"dev-1"_s << QString();
}

void TestWrappedKeys::finds()
{
    QFETCH(const QJsonArray, records);
    QFETCH(const QString, deviceId);
    QTEST(findWrappedKeyForDevice(records, deviceId), "expected");
}

void TestWrappedKeys::looksOnTheOwnSideOnly_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("deviceId");
    QTest::addColumn<QString>("expected");
    QTest::newRow("own message") << u" ALICE "_s << u"dev-1"_s << u"by alice"_s;
    QTest::newRow("peer's message") << u"bob"_s << u"dev-1"_s << u"to alice"_s;
    QTest::newRow("message of nobody") << QString() << u"dev-1"_s << u"to alice"_s;
    QTest::newRow("own message, device of the other side") << u"alice"_s << u"dev-2"_s << QString();
}

void TestWrappedKeys::looksOnTheOwnSideOnly()
{
    QFETCH(const QString, from);
    QFETCH(const QString, deviceId);
    const QJsonObject message{
        {u"from"_s, from},
        {u"senderKeys"_s, QJsonArray{record(u"dev-1"_s, u"by alice"_s)}},
        {u"recipientKeys"_s, QJsonArray{record(u"dev-1"_s, u"to alice"_s), record(u"dev-2"_s, u"to bob"_s)}},
    };
    QTEST(findOwnWrappedKey(message, u"alice"_s, deviceId), "expected");
}

TIDELOFT_TEST_MAIN(TestWrappedKeys)
#include "tst_wrapped_keys.moc"
