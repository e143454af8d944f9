// What a request carries in its address and its cookies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/exchange.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestExchange : public QObject
{
    Q_OBJECT

private slots:
    void queryValues_data();
    void queryValues();
    void cookies_data();
    void cookies();
};

void TestExchange::queryValues_data()
{
    QTest::addColumn<QByteArray>("query");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << QByteArray("?q=bob") << u"bob"_s;
    QTest::newRow("encoded plus") << QByteArray("?q=a%2Bb") << u"a+b"_s;
    QTest::newRow("plus is a blank") << QByteArray("?q=a+b") << u"a b"_s;
    QTest::newRow("encoded percent") << QByteArray("?q=%2541") << u"%41"_s;
    QTest::newRow("ampersand and hash") << QByteArray("?q=a%26b%23c") << u"a&b#c"_s;
    QTest::newRow("letters beyond ASCII") << QByteArray("?q=%C3%85%C3%84%C3%96%F0%9F%98%80") << u"ÅÄÖ😀"_s;
    QTest::newRow("second item") << QByteArray("?x=1&q=2&q=3") << u"2"_s;
    QTest::newRow("equals in the value") << QByteArray("?q=a=b") << u"a=b"_s;
    QTest::newRow("no value") << QByteArray("?q") << QString();
    QTest::newRow("other item") << QByteArray("?qq=1") << QString();
    QTest::newRow("no query") << QByteArray() << QString();
}

void TestExchange::queryValues()
{
    QFETCH(QByteArray, query);
    QFETCH(QString, value);
    QCOMPARE(queryValue({"GET", "/search" + query, {}, {}, {}, {}}, "q"), value);
}

void TestExchange::cookies_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("alone") << QByteArray("id=1") << QByteArray("1");
    QTest::newRow("among others") << QByteArray("a=0; id=1; b=2") << QByteArray("1");
    QTest::newRow("longer name") << QByteArray("idx=2; xid=3") << QByteArray();
    QTest::newRow("none") << QByteArray() << QByteArray();
}

void TestExchange::cookies()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, value);
    QCOMPARE(cookieValue({"GET", "/", {}, header, {}, {}}, "id"), value);
}

TIDELOFT_TEST_MAIN(TestExchange)
#include "tst_exchange.moc"
