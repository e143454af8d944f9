// Base64 text in both directions.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

class TestBase64 : public QObject
{
    Q_OBJECT

private slots:
    void encodes_data();
    void encodes();
    void decodes_data();
    void decodes();
    void refusesWhatYieldsNoByte_data();
    void refusesWhatYieldsNoByte();
    void successLeavesTheErrorTextAlone();
    void nobodyHasToAskForTheError();
};

void TestBase64::encodes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    // RFC 4648, section 10
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("f") << QByteArray("f") << u"Zg=="_s;
    QTest::newRow("fo") << QByteArray("fo") << u"Zm8="_s;
    QTest::newRow("foobar") << QByteArray("foobar") << u"Zm9vYmFy"_s;
    QTest::newRow("standard alphabet") << QByteArray("\xfb\xff\xbf") << u"+/+/"_s;
    QTest::newRow("no line breaks") << QByteArray(300, '\0') << QString(400, u'A');
}

void TestBase64::encodes()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, text);
    QCOMPARE(toBase64Text(bytes), text);
    QCOMPARE(fromBase64Text(text), bytes);
}

void TestBase64::decodes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("outer white space") << u"  QUJD  "_s << QByteArray("ABC");
    QTest::newRow("line end behind") << u"QUJD\r\n"_s << QByteArray("ABC");
    QTest::newRow("line break inside") << u"QU\nJD"_s << QByteArray("ABC");
    QTest::newRow("foreign characters are skipped") << u"Q!U-J_D"_s << QByteArray("ABC");
    QTest::newRow("padding is optional") << u"Zg"_s << QByteArray("f");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("blank") << u" \t\r\n "_s << QByteArray();
}

void TestBase64::decodes()
{
    QFETCH(const QString, text);
    QString error;
    QTEST(fromBase64Text(text, &error), "bytes");
    QVERIFY(error.isNull());
}

void TestBase64::refusesWhatYieldsNoByte_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no character of the alphabet") << u"!!!!"_s;
    QTest::newRow("padding alone") << u"===="_s;
    QTest::newRow("six bits are no byte") << u"A"_s;
    QTest::newRow("outside ASCII") << u"åäö💬"_s;
}

void TestBase64::refusesWhatYieldsNoByte()
{
    QFETCH(const QString, text);
    QString error = u"before"_s;
    QVERIFY(fromBase64Text(text, &error).isEmpty());
    QCOMPARE(error, u"Invalid base64 data."_s);
}

void TestBase64::successLeavesTheErrorTextAlone()
{
    QString error = u"before"_s;
    QCOMPARE(fromBase64Text(u"QUJD"_s, &error), QByteArray("ABC"));
    QVERIFY(fromBase64Text(QString(), &error).isEmpty());
    QCOMPARE(error, u"before"_s);
}

void TestBase64::nobodyHasToAskForTheError()
{
    QVERIFY(fromBase64Text(u"!!!!"_s).isEmpty());
}

TIDELOFT_TEST_MAIN(TestBase64)
#include "tst_base64.moc"
