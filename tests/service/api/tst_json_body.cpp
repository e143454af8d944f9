// Which bodies are read, and which members.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/json_body.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestJsonBody : public QObject
{
    Q_OBJECT

private slots:
    void bodies_data();
    void bodies();
    void texts_data();
    void texts();
    void depthIgnoresBracketsInStrings();
};

namespace
{

Request request(const QByteArray &contentType, const QByteArray &body)
{
    return {"POST", "/", contentType, {}, body};
}

// 0 when the step succeeds.
template <typename Step> int refusalOf(Step step)
{
    try {
        step();
    } catch (const Refusal &refusal) {
        return refusal.status;
    }
    return 0;
}

QByteArray nested(int depth)
{
    return R"({"a":)" + QByteArray(depth - 1, '[') + QByteArray(depth - 1, ']') + '}';
}

} // namespace

void TestJsonBody::bodies_data()
{
    QTest::addColumn<QByteArray>("contentType");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    const QByteArray json = "application/json";
    QTest::newRow("object") << json << QByteArray("{}") << 0;
    QTest::newRow("charset beside the type")
        << QByteArray("Application/JSON; charset=utf-8") << QByteArray("{}") << 0;
    QTest::newRow("form") << QByteArray("application/x-www-form-urlencoded") << QByteArray("{}") << 415;
    QTest::newRow("no type") << QByteArray() << QByteArray("{}") << 415;
    QTest::newRow("empty") << json << QByteArray() << 400;
    QTest::newRow("array") << json << QByteArray("[]") << 400;
    QTest::newRow("cut off") << json << QByteArray(R"({"a":)") << 400;
    QTest::newRow("something behind it") << json << QByteArray("{} {}") << 400;
    QTest::newRow("invalid UTF-8") << json << QByteArray("{\"a\":\"\xff\"}") << 400;
    QTest::newRow("32 levels") << json << nested(32) << 0;
    QTest::newRow("33 levels") << json << nested(33) << 400;
    QTest::newRow("100,000 levels") << json << nested(100'000) << 400;
}

void TestJsonBody::bodies()
{
    QFETCH(QByteArray, contentType);
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    QCOMPARE(refusalOf([&] { JsonBody{request(contentType, body)}; }), status);
}

void TestJsonBody::texts_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("status");
    QTest::newRow("within the length") << QByteArray(R"("abcd")") << 0;
    QTest::newRow("too long") << QByteArray(R"("abcde")") << 400;
    QTest::newRow("emoji count once") << QByteArray(R"("😀😀😀😀")") << 0;
    QTest::newRow("too many emoji") << QByteArray(R"("😀😀😀😀😀")") << 400;
    QTest::newRow("number") << QByteArray("1") << 400;
    QTest::newRow("null") << QByteArray("null") << 400;
    QTest::newRow("half a surrogate pair") << QByteArray(R"("\ud83d")") << 400;
}

void TestJsonBody::texts()
{
    QFETCH(QByteArray, value);
    QFETCH(int, status);
    const JsonBody body(request("application/json", R"({"a":)" + value + '}'));
    QCOMPARE(refusalOf([&] { body.text(u"a"_s, 4); }), status);
    QCOMPARE(refusalOf([&] { body.text(u"missing"_s, 4); }), 400);
    QCOMPARE(refusalOf([&] { body.array(u"a"_s); }), 400);
    QCOMPARE(refusalOf([&] { body.boolean(u"a"_s, false); }), 400);
    QCOMPARE(body.boolean(u"missing"_s, true), true);
}

void TestJsonBody::depthIgnoresBracketsInStrings()
{
    const QByteArray brackets = R"({"a":"[[[[","b":"\"[[","c":"\\"})";
    QCOMPARE(jsonDepth(brackets), 1);
    const QByteArray afterBackslash = R"({"a":"\\","b":[[]]})";
    QCOMPARE(jsonDepth(afterBackslash), 3);
}

TIDELOFT_TEST_MAIN(TestJsonBody)
#include "tst_json_body.moc"
