// Status and document of every kind of reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/json_reply.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using tideloft::net::JsonReply;
using tideloft::net::readJsonReply;
using tideloft::tests::LoopbackService;

class TestJsonReply : public QObject
{
    Q_OBJECT

private slots:
    void readsStatusAndDocument_data();
    void readsStatusAndDocument();
    void noServiceMeansStatusZero();

private:
    static JsonReply fetch(const LoopbackService &service);
};

JsonReply TestJsonReply::fetch(const LoopbackService &service)
{
    QNetworkAccessManager network;
    QNetworkReply *reply = network.get(QNetworkRequest(QUrl(service.url() + u"/a"_s)));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    [[maybe_unused]] const bool done = finished.wait();
    return readJsonReply(*reply);
}

void TestJsonReply::readsStatusAndDocument_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("document");
    const QByteArray deep = QByteArray(2000, '[') + QByteArray(2000, ']');
    const QByteArray empty;
    QTest::newRow("object") << 200 << QByteArray(R"({"a":1})") << QByteArray(R"({"a":1})");
    QTest::newRow("array") << 201 << QByteArray("[1]") << QByteArray("[1]");
    QTest::newRow("error with an object") << 401 << QByteArray("{}") << QByteArray("{}");
    QTest::newRow("empty body") << 200 << empty << empty;
    QTest::newRow("HTML") << 503 << QByteArray("<html>Sorry</html>") << empty;
    QTest::newRow("bare text") << 200 << QByteArray("\"text\"") << empty;
    QTest::newRow("cut off") << 200 << QByteArray(R"({"a":)") << empty;
    QTest::newRow("nested too deep") << 200 << deep << empty;
}

void TestJsonReply::readsStatusAndDocument()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QFETCH(const QByteArray, document);
    LoopbackService service;
    service.answer("GET /a", status, body);
    const JsonReply reply = fetch(service);
    QCOMPARE(reply.httpStatus, status);
    QCOMPARE(reply.document.isNull(), document.isEmpty());
    QCOMPARE(reply.document.toJson(QJsonDocument::Compact), document);
}

void TestJsonReply::noServiceMeansStatusZero()
{
    LoopbackService service;
    service.stop();
    const JsonReply reply = fetch(service);
    QCOMPARE(reply.httpStatus, 0);
    QVERIFY(reply.document.isNull());
}

TIDELOFT_TEST_MAIN(TestJsonReply)
#include "tst_json_reply.moc"
