// How large a body may be: more where a signed-in user sends a picture, and nowhere else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_server.h"
#include "tests/service/daemon.h"
#include "tests/service/picture_material.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <algorithm>
#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestUploadLimits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void bodies_data();
    void bodies();
    void strangersBodyIsNotReadOn();
    void endlessUploadIsCutOff();
    void hugeUploadNeedsNoMemory();
    void slowReadersNeedLittleMemory();
    void unfinishedUploadsNeedLittleMemory();
    void picturesOnTheWayToAServerNeedLittleMemory();

private:
    static constexpr qsizetype small = 16 * 1024;
    static constexpr qsizetype usual = 1024 * 1024;
    static constexpr qsizetype upload = (5 * 1024 + 64) * 1024;

    static constexpr qsizetype picture = 5 * 1024 * 1024;
    // ThreadSanitizer's books of each byte are several times its size.
#ifdef __SANITIZE_THREAD__
    static constexpr qint64 withBooks = 6;
#else
    static constexpr qint64 withBooks = 1;
#endif
    // the share of one account, and the work on one picture
    static constexpr qint64 most = withBooks * 56 * 1024 * 1024;

    // A form of exactly this size: what is missing stands in front of it, where nobody reads it.
    static QByteArray formOf(const QByteArray &field, qsizetype size)
    {
        const QByteArray whole = "\r\n" + form(filePart(field, png()));
        return QByteArray(size - whole.size(), 'x') + whole;
    }

    static QByteArray uploadHead(const QByteArray &cookie, qsizetype size)
    {
        return "POST /api/profile/avatar/upload HTTP/1.1\r\nHost: h\r\nCookie: " + cookie
               + "\r\nContent-Length: " + QByteArray::number(size) + "\r\n";
    }

    static QByteArray signUp(quint16 port, const QByteArray &name = "alice");
    static qint64 peakMemory(qint64 process);

    const ApiServer server;
    const QByteArray alice = server.signUp(u"alice"_s);
};

// What the address sanitizer keeps back of freed memory would count as the service's.
void TestUploadLimits::initTestCase()
{
    qputenv("ASAN_OPTIONS",
            qgetenv("ASAN_OPTIONS") + ":quarantine_size_mb=0:thread_local_quarantine_size_kb=0");
}

void TestUploadLimits::bodies_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const QByteArray &method, const QByteArray &target, qsizetype size,
                        bool signedIn, int status) {
        QTest::newRow(name) << method << target << size << signedIn << status;
    };
    const QByteArray avatar = "/api/profile/avatar/upload";
    row("picture", "POST", avatar, upload, true, 200);
    row("picture, one byte more", "POST", avatar, upload + 1, true, 413);
    row("icon of no group", "POST", "/api/groups/none/icon", upload, true, 404);
    row("icon, one byte more", "POST", "/api/groups/none/icon", upload + 1, true, 413);
    row("picture of a stranger", "POST", avatar, small, false, 401);
    row("picture of a stranger, one byte more", "POST", avatar, small + 1, false, 401);
    row("large picture of a stranger", "POST", avatar, upload, false, 401);
    row("icon of a stranger, one byte more", "POST", "/api/groups/none/icon", small + 1, false, 401);
    row("message of a stranger", "POST", "/api/chat/send", usual, false, 401);
    row("registration", "POST", "/api/auth/register", small, false, 415);
    row("registration, one byte more", "POST", "/api/auth/register", small + 1, false, 413);
    row("sign-in, one byte more", "POST", "/api/auth/login", small + 1, false, 413);
    row("sign-in of who is signed in, one byte more", "POST", "/api/auth/login", small + 1, true, 413);
    row("new group", "POST", "/api/groups", usual, true, 415);
    row("new group, one byte more", "POST", "/api/groups", usual + 1, true, 413);
    row("profile, one byte more", "POST", "/api/profile/update", usual + 1, true, 413);
    row("path that does not exist", "POST", avatar + "/x", usual + 1, true, 413);
    row("other method", "PUT", avatar, usual + 1, true, 413);
}

void TestUploadLimits::bodies()
{
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, target);
    QFETCH(qsizetype, size);
    QFETCH(bool, signedIn);
    const QByteArray body = formOf("avatar", size);
    QCOMPARE(body.size(), size);
    const HttpReply reply = server.call(method, target, signedIn ? alice : QByteArray(), body, formType);
    QTEST(reply.status, "status");
    QCOMPARE(reply.message().isEmpty(), reply.status == 200);
}

// The answer does not wait for the body, so nothing of it has to be kept.
void TestUploadLimits::strangersBodyIsNotReadOn()
{
    for (const QByteArray &target : {QByteArray("/api/auth/login"), QByteArray("/api/chat/send")}) {
        HttpClient client(server.port());
        const QByteArray reply =
            client.exchange("POST " + target + " HTTP/1.1\r\nHost: h\r\nContent-Length: 1000000\r\n\r\nx");
        QCOMPARE(statusOf(reply), target.endsWith("login") ? 413 : 401);
    }
    HttpClient client(server.port());
    client.send("POST /api/auth/login HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n4001\r\n");
    QCOMPARE(statusOf(client.exchange(QByteArray(0x4001, 'x'))), 413);
}

void TestUploadLimits::endlessUploadIsCutOff()
{
    HttpClient client(server.port());
    client.send("POST /api/profile/avatar/upload HTTP/1.1\r\nHost: h\r\nCookie: " + alice
                + "\r\nTransfer-Encoding: chunked\r\n\r\n");
    for (qsizetype sent = 0; sent <= upload; sent += 0x10000)
        client.send("10000\r\n" + QByteArray(0x10000, 'x') + "\r\n");
    QCOMPARE(statusOf(client.readReply()), 413);
}

QByteArray TestUploadLimits::signUp(quint16 port, const QByteArray &name)
{
    const QByteArray user = R"({"username":")" + name + R"(","password":"a good password"})";
    QByteArray cookie;
    for (const QByteArray &target : {QByteArray("/api/auth/register"), QByteArray("/api/auth/login")}) {
        HttpClient client(port);
        const QByteArray reply =
            client.exchange("POST " + target
                            + " HTTP/1.1\r\nHost: h\r\nContent-Type: application/json\r\n"
                              "Content-Length: "
                            + QByteArray::number(user.size()) + "\r\n\r\n" + user);
        cookie = parsedReply(reply).headers.value("set-cookie").split(';').constFirst();
    }
    return cookie;
}

qint64 TestUploadLimits::peakMemory(qint64 process)
{
    QFile status(u"/proc/%1/status"_s.arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("VmHWM:") + 6).trimmed().split(' ').constFirst().toLongLong() * 1024;
}

// The reply comes although most of the body was never sent, and nothing is set aside for what was announced.
void TestUploadLimits::hugeUploadNeedsNoMemory()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    const QByteArray cookie = signUp(daemon.port());
    QVERIFY(cookie.startsWith("tideloft_session="));
    const qint64 before = peakMemory(daemon.processId());
    QVERIFY(before > 0);
    HttpClient client(daemon.port());
    client.send("POST /api/profile/avatar/upload HTTP/1.1\r\nHost: h\r\nCookie: " + cookie
                + "\r\nContent-Length: 629145600\r\n\r\n" + QByteArray(20 * 1024 * 1024, 'x'));
    QCOMPARE(statusOf(client.readReply()), 413);
    const qint64 grown = peakMemory(daemon.processId()) - before;
    QVERIFY2(grown < 8 * 1024 * 1024, QByteArray::number(grown).constData());
}

// Forty connections of one account ask for a picture and do not read it.
void TestUploadLimits::slowReadersNeedLittleMemory()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    const QByteArray cookie = signUp(daemon.port());
    const QByteArray body = form(filePart("avatar", png(picture)));
    HttpClient uploader(daemon.port());
    const HttpReply uploaded = parsedReply(
        uploader.exchange(uploadHead(cookie, body.size()) + "Content-Type: " + formType + "\r\n\r\n" + body));
    QCOMPARE(uploaded.status, 200);
    const qint64 before = peakMemory(daemon.processId());
    QMap<int, int> replies;
    std::vector<std::unique_ptr<HttpClient>> clients;
    for (int i = 0; i < 40; ++i) {
        clients.push_back(std::make_unique<HttpClient>(daemon.port()));
        clients.back()->socket.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, 4096);
        clients.back()->socket.setReadBufferSize(100);
        clients.back()->send("GET " + uploaded.text(u"avatarUrl"_s).toLatin1()
                             + " HTTP/1.1\r\nHost: h\r\nCookie: " + cookie + "\r\n\r\n");
        ++replies[statusOf(clients.back()->readUntil("\r\n"))];
    }
    QCOMPARE(replies.keys(), (QList{200, 503}));
    const qint64 grown = peakMemory(daemon.processId()) - before;
    QVERIFY2(grown < most, QByteArray::number(grown).constData());
}

// Forty forms of one account, of which the last byte does not come: memory is taken for what has come.
void TestUploadLimits::unfinishedUploadsNeedLittleMemory()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    const QByteArray cookie = signUp(daemon.port());
    const qint64 before = peakMemory(daemon.processId());
    std::vector<std::unique_ptr<HttpClient>> clients;
    for (int i = 0; i < 40; ++i) {
        clients.push_back(std::make_unique<HttpClient>(daemon.port()));
        HttpClient &client = *clients.back();
        QCOMPARE(statusOf(client.exchange(uploadHead(cookie, picture) + "Expect: 100-continue\r\n\r\n")),
                 100);
        client.send(QByteArray(picture - 1, 'x'));
        while (client.socket.bytesToWrite() > 0 && client.socket.waitForBytesWritten())
            continue;
    }
    const auto refused = [&clients] {
        return std::count_if(clients.begin(), clients.end(), [](const auto &client) {
            return client->socket.bytesAvailable() > 0 || !client->isConnected();
        });
    };
    QTRY_COMPARE(refused(), 37);
    const qint64 grown = peakMemory(daemon.processId()) - before;
    QVERIFY2(grown < most, QByteArray::number(grown).constData());
}

// Six people send the largest picture at the same moment, each on the way of a writer to the server.
void TestUploadLimits::picturesOnTheWayToAServerNeedLittleMemory()
{
    PostgresqlCluster cluster;
    Daemon daemon;
    QVERIFY(daemon.startPlain({u"--database"_s, cluster.url()}));
    const QByteArray body = form(filePart("avatar", png(picture)));
    QByteArrayList cookies;
    for (int i = 0; i < 6; ++i)
        cookies << signUp(daemon.port(), "user" + QByteArray::number(i));
    const qint64 before = peakMemory(daemon.processId());
    std::atomic<int> stored = 0;
    std::vector<std::thread> people;
    for (const QByteArray &cookie : std::as_const(cookies))
        people.emplace_back([&, cookie] {
            HttpClient client(daemon.port());
            const QByteArray head =
                uploadHead(cookie, body.size()) + "Content-Type: " + formType + "\r\n\r\n";
            stored += parsedReply(client.exchange(head + body)).status == 200 ? 1 : 0;
        });
    for (std::thread &person : people)
        person.join();
    QCOMPARE(stored.load(), 6);
    const qint64 grown = peakMemory(daemon.processId()) - before;
    QVERIFY2(grown < 3 * most, QByteArray::number(grown).constData());
}

TIDELOFT_TEST_MAIN(TestUploadLimits)
#include "tst_upload_limits.moc"
