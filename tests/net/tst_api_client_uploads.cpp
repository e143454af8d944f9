// The two uploads: the multipart body byte for byte, and what is (and is not) reported of their outcome.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/upload_wire.h"
#include "tests/support/net/wire.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

class TestApiClientUploads : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void avatarBytes_data();
    void avatarBytes();
    void iconBytes();
    void onlyTheCookieSaysWhose();
    void avatarReportsItsOutcome_data();
    void avatarReportsItsOutcome();
    void avatarThatCannotBeReadFailsAtOnce_data();
    void avatarThatCannotBeReadFailsAtOnce();
    void iconReportsItsAddress_data();
    void iconReportsItsAddress();
    void iconFailuresAreSilent();
    void iconThatCannotBeReadIsSilent();
    void theFileIsClosedOnceSent();
    void aClientMayGoDuringAnUpload();

private:
    QString makeFile(const QString &name, const QByteArray &content);
    QString makeObstacle(const QString &kind);
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<ApiClient> client;
};

namespace
{

const QByteArray iconKey = QByteArrayLiteral("POST /api/groups/g1/icon");
const QByteArray picture = QByteArrayLiteral("\x89PNG\r\n\x1a\n--boundary\0\xff");

} // namespace

void TestApiClientUploads::init()
{
    client.reset();
    directory = std::make_unique<QTemporaryDir>();
    service = std::make_unique<LoopbackService>();
    client = std::make_unique<ApiClient>();
}

QString TestApiClientUploads::makeFile(const QString &name, const QByteArray &content)
{
    QFile file(directory->filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Could not write %s", qPrintable(file.fileName()));
    return file.fileName();
}

QString TestApiClientUploads::makeObstacle(const QString &kind)
{
    const QString path = directory->filePath(u"picture.png"_s);
    if (kind == u"directory"_s)
        QDir().mkpath(path);
    else if (kind == u"pipe"_s)
        mkfifo(QFile::encodeName(path).constData(), 0600);
    else if (kind == u"device"_s)
        QFile::link(u"/dev/zero"_s, path);
    return path;
}

void TestApiClientUploads::avatarBytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("suffix");
    QTest::newRow("Me.PNG is sent as avatar.png") << u"Me.PNG"_s << picture << QByteArray("png");
    QTest::newRow("a .JPG as image/jpg") << u"Me.JPG"_s << picture << QByteArray("jpg");
    QTest::newRow("no suffix") << u"picture"_s << picture << QByteArray();
    QTest::newRow("empty file") << u"a.gif"_s << QByteArray() << QByteArray("gif");
    QTest::newRow("many buffers long") << u"a.webp"_s << picture.repeated(100000) << QByteArray("webp");
    QTest::newRow("backslash") << u"a.pn\\g\\"_s << picture << QByteArray("png");
    QTest::newRow("quote and line break") << u"a.p\"\r\nng"_s << picture << QByteArray("png");
}

void TestApiClientUploads::avatarBytes()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    QFETCH(const QByteArray, suffix);
    const QString path = makeFile(name, content);
    service->answer(requests::uploadAvatar, 200, "{}");
    QSignalSpy uploaded(client.get(), &ApiClient::avatarUploaded);
    client->uploadAvatar(path);
    QVERIFY(uploaded.wait());
    QCOMPARE(uploaded.first(), (QVariantList{true, path})); // the path itself is untouched
    const RecordedRequest request = service->lastRequest(requests::uploadAvatar);
    QCOMPARE(sentUpload(request),
             wantedUpload(request, "/api/profile/avatar/upload", "avatar", suffix, content));
}

void TestApiClientUploads::iconBytes()
{
    service->answer(iconKey, 200, "{}");
    QSignalSpy uploaded(client.get(), &ApiClient::serverIconUploaded);
    client->uploadServerIcon(u"g1"_s, makeFile(u"Icon.JPEG"_s, picture));
    QVERIFY(uploaded.wait());
    const RecordedRequest request = service->lastRequest(iconKey);
    QCOMPARE(sentUpload(request), wantedUpload(request, "/api/groups/g1/icon", "icon", "jpeg", picture));
}

void TestApiClientUploads::onlyTheCookieSaysWhose()
{
    service->answer("GET /api/groups", 200, "[]", {{"Set-Cookie", "session=one; Path=/"}});
    QSignalSpy loaded(client.get(), &ApiClient::serversLoaded);
    client->fetchServers();
    QVERIFY(loaded.wait());
    QVERIFY(service->lastRequest().hasHeader("X-Device-Token"));
    client->uploadAvatar(makeFile(u"a.png"_s, picture));
    QVERIFY(service->waitForRequests(requests::uploadAvatar, 1));
    QCOMPARE(service->lastRequest().header("Cookie"), QByteArray("session=one"));
    QVERIFY(!service->lastRequest().hasHeader("X-Device-Token"));
    QVERIFY(!service->lastRequest().hasHeader("X-Device-Name"));
}

void TestApiClientUploads::avatarReportsItsOutcome_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("ok");
    QTest::newRow("taken") << 200 << QByteArray() << true;
    QTest::newRow("taken, whatever the body") << 201 << QByteArray(R"({"message":"no"})") << true;
    QTest::newRow("too large") << 413 << QByteArray(R"({"message":"Too large"})") << false;
    QTest::newRow("broken") << 500 << QByteArray() << false;
}

void TestApiClientUploads::avatarReportsItsOutcome()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QFETCH(const bool, ok);
    service->answer(requests::uploadAvatar, status, body);
    const QString path = makeFile(u"a.png"_s, picture);
    const SignalLog log(*client);
    QSignalSpy uploaded(client.get(), &ApiClient::avatarUploaded);
    client->uploadAvatar(path);
    QVERIFY(uploaded.wait());
    QCOMPARE(uploaded.first(), (QVariantList{ok, path}));
    QCOMPARE(log.emitted(), QList<QByteArray>{"avatarUploaded"});
}

void TestApiClientUploads::avatarThatCannotBeReadFailsAtOnce_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"missing", "directory", "pipe", "device"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void TestApiClientUploads::avatarThatCannotBeReadFailsAtOnce()
{
    QFETCH(const QString, kind);
    const QString path = makeObstacle(kind);
    QSignalSpy uploaded(client.get(), &ApiClient::avatarUploaded);
    client->uploadAvatar(path);
    QCOMPARE(uploaded.size(), 1); // before any event was handled
    QCOMPARE(uploaded.first(), (QVariantList{false, path}));
    QVERIFY(settle(*client));
    QCOMPARE(service->count(requests::uploadAvatar), 0);
}

void TestApiClientUploads::iconReportsItsAddress_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("iconUrl");
    QTest::newRow("address") << QByteArray(R"({"iconUrl":"/i/1"})") << u"/i/1"_s;
    QTest::newRow("missing") << QByteArray("{}") << QString();
    QTest::newRow("no text") << QByteArray(R"({"iconUrl":1})") << QString();
    QTest::newRow("array") << QByteArray(R"([{"iconUrl":"/i/1"}])") << QString();
    QTest::newRow("empty") << QByteArray() << QString();
}

void TestApiClientUploads::iconReportsItsAddress()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const QString, iconUrl);
    service->answer("POST /api/groups/G%201/icon", 200, reply);
    QSignalSpy uploaded(client.get(), &ApiClient::serverIconUploaded);
    client->uploadServerIcon(u"G 1"_s, makeFile(u"a.png"_s, picture));
    QVERIFY(uploaded.wait());
    QCOMPARE(uploaded.first(), (QVariantList{u"G 1"_s, iconUrl}));
}

void TestApiClientUploads::iconFailuresAreSilent()
{
    service->answer(iconKey, 500, R"({"iconUrl":"/i/1","message":"no"})");
    const SignalLog log(*client);
    client->uploadServerIcon(u"g1"_s, makeFile(u"a.png"_s, picture));
    QVERIFY(service->waitForRequests(iconKey, 1));
    QVERIFY(settle(*client));
    QCOMPARE(log.emitted(), QList<QByteArray>{"serversFailed"}); // settle's own
}

void TestApiClientUploads::iconThatCannotBeReadIsSilent()
{
    const SignalLog log(*client);
    client->uploadServerIcon(u"g1"_s, directory->filePath(u"missing.png"_s));
    client->uploadServerIcon(u"g1"_s, makeObstacle(u"pipe"_s));
    QVERIFY(settle(*client));
    QCOMPARE(log.emitted(), QList<QByteArray>{"serversFailed"}); // settle's own
    QCOMPARE(service->count(iconKey), 0);
}

void TestApiClientUploads::theFileIsClosedOnceSent()
{
    service->answer(requests::uploadAvatar, 200, "{}");
    service->hold(requests::uploadAvatar);
    const QString path = makeFile(u"a.png"_s, picture);
    client->uploadAvatar(path);
    QVERIFY(service->waitForRequests(requests::uploadAvatar, 1));
    QVERIFY(isOpen(path));
    service->release(requests::uploadAvatar);
    QTRY_VERIFY(!isOpen(path));
}

void TestApiClientUploads::aClientMayGoDuringAnUpload()
{
    service->hold(requests::uploadAvatar);
    const QString path = makeFile(u"a.png"_s, picture.repeated(100000));
    const QSignalSpy reports(client.get(), &ApiClient::avatarUploaded);
    client->uploadAvatar(path);
    QVERIFY(service->waitForRequests(requests::uploadAvatar, 1));
    client.reset();
    QTRY_VERIFY(!isOpen(path));
    service->release(requests::uploadAvatar);
    ApiClient another;
    QVERIFY(settle(another));
    QCOMPARE(reports.size(), 0);
}

TIDELOFT_TEST_MAIN(TestApiClientUploads)
#include "tst_api_client_uploads.moc"
