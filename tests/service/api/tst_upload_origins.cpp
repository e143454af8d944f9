// Uploads that a browser sends: the service's own pages may, those of others may not.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_server.h"
#include "tests/service/picture_material.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestUploadOrigins : public QObject
{
    Q_OBJECT

private slots:
    void avatar_data() { origins(); }
    void avatar();
    void icon_data() { origins(); }
    void icon();

private:
    static void origins();

    HttpReply upload(const QByteArray &target, const QByteArray &field, const QByteArray &header) const
    {
        return server.call("POST", target, alice, form(filePart(field, png())), formType, header);
    }

    const ApiServer server;
    const QByteArray alice = server.signUp(u"alice"_s);
};

// The client of the test names its server "h".
void TestUploadOrigins::origins()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const QByteArray &header, int status) {
        QTest::newRow(name) << header << status;
    };
    row("native client", "", 200);
    row("own page", "Origin: http://h\r\n", 200);
    row("own page, written in capitals", "ORIGIN: http://H\r\n", 200);
    row("other host", "Origin: http://example.org\r\n", 403);
    row("host that begins alike", "Origin: http://h.example.org\r\n", 403);
    row("other port", "Origin: http://h:8080\r\n", 403);
    row("other scheme", "Origin: https://h\r\n", 403);
    row("page without an origin of its own", "Origin: null\r\n", 403);
    row("empty", "Origin:\r\n", 403);
    row("own one before another", "Origin: http://h\r\nOrigin: http://example.org\r\n", 403);
}

void TestUploadOrigins::avatar()
{
    QFETCH(QByteArray, header);
    QFETCH(int, status);
    const QString before = server.get("/api/me", alice).text(u"avatarUrl"_s);
    const HttpReply reply = upload("/api/profile/avatar/upload", "avatar", header);
    QCOMPARE(reply.status, status);
    QCOMPARE(reply.message().isEmpty(), status == 200);
    QCOMPARE(server.get("/api/me", alice).text(u"avatarUrl"_s) != before, status == 200);
}

void TestUploadOrigins::icon()
{
    QFETCH(QByteArray, header);
    QFETCH(int, status);
    const QJsonObject body{{u"name"_s, u"Chess"_s}, {u"description"_s, u""_s}};
    const QByteArray group =
        "/api/groups/" + server.post("/api/groups", body, alice).text(u"groupId"_s).toLatin1();
    QCOMPARE(upload(group + "/icon", "icon", header).status, status);
    QCOMPARE(server.get(group, alice).text(u"iconUrl"_s).isEmpty(), status != 200);
}

TIDELOFT_TEST_MAIN(TestUploadOrigins)
#include "tst_upload_origins.moc"
