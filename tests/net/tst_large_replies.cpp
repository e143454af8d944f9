// Replies that are larger than any may be: each is given up, and says so, before it fills the memory.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_limit.h"
#include "tests/support/long_form.h"
#include "tests/support/loopback_service.h"
#include "tests/support/net/endpoints.h"
#include "tests/support/net/finished_replies.h"
#include "tests/support/net/flooding_service.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::net::largestReply;

namespace
{

constexpr qint64 mebibyte = qint64{1024} * 1024;
const QString tooLarge = u"The reply is too large."_s;

// What the client holds, what the toolkit's thread does, and what the system has in its own buffers.
constexpr qint64 mostTaken = 2 * largestReply + 64 * mebibyte;

QStringList reportsOf(const Endpoint &endpoint, const ReplyContent &content, const ReportLog &log)
{
    QStringList reports = endpoint.outcome(content);
    reports.replaceInStrings(u"%1"_s, log.picturePath());
    return reports;
}

// Requests that share no code with each other, and in the long form all.
void addEndpoints()
{
    QTest::addColumn<int>("endpoint");
    const QList<QByteArray> unlike{"conversations", "save profile", "servers", "upload avatar",
                                   "upload icon"};
    for (int i = 0; i < endpoints().size(); ++i) {
        if (rounds(0, 1) == 1 || unlike.contains(endpoints().at(i).name))
            QTest::newRow(endpoints().at(i).name) << i;
    }
}

// A body of blanks and other letters that shrinks to less than a thirtieth, but to more than the fortieth at
// which the toolkit itself refuses it.
QByteArray deflated(qint64 size)
{
    QByteArray block;
    for (quint32 letter = 1; block.size() < mebibyte; letter = letter * 1664525 + 1013904223)
        block += QByteArray(1, static_cast<char>(letter >> 24)) + QByteArray(90, ' ');
    return qCompress(block.repeated(size / block.size() + 1), 1).mid(4); // without the size before it
}

} // namespace

class TestLargeReplies : public QObject
{
    Q_OBJECT

private slots:
    void anEndlessReplyIsGivenUp_data();
    void anEndlessReplyIsGivenUp();
    void aReplyThatUnfoldsIsGivenUp_data() { addEndpoints(); }
    void aReplyThatUnfoldsIsGivenUp();
    void theLastByteDecides_data();
    void theLastByteDecides();
    void aLargeReplyInManyPiecesComesWhole();
};

void TestLargeReplies::anEndlessReplyIsGivenUp_data()
{
    QTest::addColumn<int>("endpoint");
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("piece");
    const QByteArray chunk = "100000\r\n" + QByteArray(mebibyte, ' ') + "\r\n";
    const QByteArray plain(mebibyte, ' ');
    for (int i = 0; i < endpoints().size(); ++i) {
        const auto row = [i](const char *name, const QByteArray &head, const QByteArray &piece) {
            if (rounds(0, 1) == 1 || i % 5 == 1)
                QTest::addRow("%s: %s", endpoints().at(i).name, name) << i << head << piece;
        };
        row("chunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", chunk);
        row("no length", "HTTP/1.1 200 OK\r\n\r\n", plain);
        row("a length", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n", plain);
        row("refusal", "HTTP/1.1 500 No\r\nTransfer-Encoding: chunked\r\n\r\n", chunk);
    }
}

void TestLargeReplies::anEndlessReplyIsGivenUp()
{
    QFETCH(const int, endpoint);
    QFETCH(const QByteArray, head);
    QFETCH(const QByteArray, piece);
    const Endpoint &asked = endpoints().at(endpoint);
    const FloodingService service(head, piece, 2 * mostTaken);
    ReportLog log;
    FinishedReplies finished;
    asked.ask(log);
    QVERIFY(finished.reach(1, 6 * patience()));
    QCOMPARE(log.reports(), reportsOf(asked, {tooLarge, {}}, log));
    QVERIFY2(service.taken() > 0 && service.taken() <= mostTaken,
             qPrintable(QString::number(service.taken())));
}

void TestLargeReplies::aReplyThatUnfoldsIsGivenUp()
{
    QFETCH(const int, endpoint);
    static const QByteArray body = deflated(2 * largestReply);
    QVERIFY(body.size() * 30 < 2 * largestReply && body.size() * 40 > 2 * largestReply);
    const Endpoint &asked = endpoints().at(endpoint);
    LoopbackService service;
    service.answer(asked.key, 200, body, {{"Content-Encoding", "deflate"}});
    ReportLog log;
    FinishedReplies finished;
    asked.ask(log);
    QVERIFY(finished.reach(1, 6 * patience()));
    QCOMPARE(log.reports(), reportsOf(asked, {tooLarge, {}}, log));
}

void TestLargeReplies::theLastByteDecides_data()
{
    QTest::addColumn<bool>("chunked");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QStringList>("expected");
    for (const bool chunked : {false, true}) {
        const char *form = chunked ? "chunked" : "with its length";
        QTest::addRow("as large as one may be, %s", form)
            << chunked << largestReply << QStringList{u"conversationsLoaded []"_s};
        QTest::addRow("one byte more, %s", form)
            << chunked << largestReply + 1 << QStringList{u"conversationsFailed "_s + tooLarge};
    }
}

void TestLargeReplies::theLastByteDecides()
{
    QFETCH(const bool, chunked);
    QFETCH(const qint64, size);
    QFETCH(const QStringList, expected);
    const QByteArray body = '[' + QByteArray(size - 2, ' ') + ']';
    LoopbackService service;
    if (chunked)
        service.raw("GET /api/chat/conversations", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                                       + QByteArray::number(size, 16) + "\r\n" + body
                                                       + "\r\n0\r\n\r\n");
    else
        service.answer("GET /api/chat/conversations", 200, body);
    ReportLog log;
    FinishedReplies finished;
    log.client.fetchConversations();
    QVERIFY(finished.reach(1, 6 * patience()));
    QCOMPARE(log.reports(), expected);
}

// And the connection serves on.
void TestLargeReplies::aLargeReplyInManyPiecesComesWhole()
{
    LoopbackService service;
    const QByteArray chunk = "fa\r\n" + QByteArray(250, ' ') + "\r\n";
    service.raw("GET /api/chat/conversations",
                "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\n[\r\n" + chunk.repeated(40'000)
                    + "1\r\n]\r\n0\r\n\r\n",
                false);
    ReportLog log;
    FinishedReplies finished;
    for (const int round : {1, 2}) {
        log.client.fetchConversations();
        QVERIFY(finished.reach(round, 6 * patience()));
        QCOMPARE(log.reports(), QStringList{u"conversationsLoaded []"_s});
        log.forget();
    }
}

TIDELOFT_TEST_MAIN(TestLargeReplies)
#include "tst_large_replies.moc"
