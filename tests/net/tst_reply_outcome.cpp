// How a reply ended: well, with the toolkit's error text, or cut off.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_outcome.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using tideloft::net::outcomeOf;
using tideloft::tests::LoopbackService;

class TestReplyOutcome : public QObject
{
    Q_OBJECT

private slots:
    void outcomes_data();
    void outcomes();
};

void TestReplyOutcome::outcomes_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const QByteArray &reply, const QString &error = {}) {
        QTest::newRow(name) << reply << error;
    };
    row("success", "200 OK\r\nContent-Length: 2\r\n\r\n[]");
    row("chunks with a length that does not count",
        "200 OK\r\nContent-Length: 99\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n[]\r\n0\r\n\r\n");
    row("no content whatever its length", "204 No Content\r\nContent-Length: 9\r\n\r\n");
    row("nobody is signed in", "401 Unauthorized\r\nContent-Length: 2\r\n\r\n{}",
        u"Host requires authentication"_s);
    row("shorter than its length", "200 OK\r\nContent-Length: 9\r\n\r\n[]", u"Connection closed"_s);
}

void TestReplyOutcome::outcomes()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const QString, error);
    LoopbackService service;
    service.raw("GET /a", "HTTP/1.1 " + reply);
    QNetworkAccessManager network;
    QNetworkReply *received = network.get(QNetworkRequest(QUrl(service.url() + u"/a"_s)));
    QSignalSpy finished(received, &QNetworkReply::finished);
    QVERIFY(finished.wait());
    QCOMPARE(outcomeOf(*received).errorText, error);
    QCOMPARE(outcomeOf(*received).ok, error.isEmpty());
}

TIDELOFT_TEST_MAIN(TestReplyOutcome)
#include "tst_reply_outcome.moc"
