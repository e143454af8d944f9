// Pictures over the wire: taken in, given back, replaced, and refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_server.h"
#include "tests/service/picture_material.h"
#include "tests/support/test_main.h"

#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::tests;

class TestPictures : public QObject
{
    Q_OBJECT

private slots:
    void avatarIsGivenBackAsItCame_data();
    void avatarIsGivenBackAsItCame();
    void avatarBelongsToOneUser();
    void iconIsInTheGroup();
    void secondUploadRemovesTheFirst_data();
    void secondUploadRemovesTheFirst();
    void picturesHaveSoMuchRoom();
    void onlyMembersChangeTheIcon();
    void onlySignedInUsersSeePictures();
    void unknownPicture();
    void uploadOfTheToolkitIsTaken_data();
    void uploadOfTheToolkitIsTaken();
    void sizes_data();
    void sizes();
    void refusedContent_data();
    void refusedContent();

private:
    static inline const QByteArray avatarPath = "/api/profile/avatar/upload";

    HttpReply upload(const QByteArray &target, const QByteArray &field, const QByteArray &content,
                     const QByteArray &cookie) const
    {
        return server.call("POST", target, cookie, form(filePart(field, content)), formType);
    }

    QString avatarOf(const QByteArray &cookie) const
    {
        return server.get("/api/me", cookie).text(u"avatarUrl"_s);
    }

    QByteArray makeGroup() const
    {
        const QJsonObject body{{u"name"_s, u"Chess"_s}, {u"description"_s, u""_s}};
        return "/api/groups/" + server.post("/api/groups", body, alice).text(u"groupId"_s).toLatin1();
    }

    const ApiServer server;
    const QByteArray alice = server.signUp(u"alice"_s);
    const QByteArray bob = server.signUp(u"bob"_s);
};

void TestPictures::avatarIsGivenBackAsItCame_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("PNG") << png() << QByteArray("image/png");
    QTest::newRow("JPEG, whatever its name")
        << QByteArray("\xff\xd8\xff\xe0jpeg") << QByteArray("image/jpeg");
    QTest::newRow("GIF") << QByteArray("GIF89a<script>") << QByteArray("image/gif");
    QTest::newRow("WebP") << QByteArray("RIFF\x10\x20\x30\x40WEBPVP8 ") << QByteArray("image/webp");
    QTest::newRow("NUL and line breaks")
        << pngBegin + QByteArray("\0\r\n\r\n--\0", 8) << QByteArray("image/png");
}

void TestPictures::avatarIsGivenBackAsItCame()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, type);
    const HttpReply uploaded = upload(avatarPath, "avatar", content, alice);
    QCOMPARE(uploaded.status, 200);
    const QString url = uploaded.text(u"avatarUrl"_s);
    QVERIFY2(QRegularExpression(u"^/pictures/[0-9a-f]{40}$"_s).match(url).hasMatch(), qPrintable(url));
    QCOMPARE(avatarOf(alice), url);
    const HttpReply picture = server.get(url.toLatin1(), alice);
    QCOMPARE(picture.status, 200);
    QCOMPARE(picture.body, content);
    QCOMPARE(picture.headers.value("content-type"), type);
    QCOMPARE(picture.headers.value("x-content-type-options"), QByteArray("nosniff"));
    QCOMPARE(picture.headers.value("content-security-policy"), QByteArray("default-src 'none'; sandbox"));
    QCOMPARE(picture.headers.value("cache-control"), QByteArray("private, max-age=31536000, immutable"));
}

void TestPictures::avatarBelongsToOneUser()
{
    upload(avatarPath, "avatar", png(), alice);
    QCOMPARE(avatarOf(bob), QString());
    const QString hers = avatarOf(alice);
    const QByteArray carol = server.signUp(u"carol"_s);
    upload(avatarPath, "avatar", png(), carol);
    QCOMPARE(avatarOf(alice), hers);
    QVERIFY(avatarOf(carol) != hers); // although the pictures are the same
    QCOMPARE(server.get(hers.toLatin1(), carol).status, 200);
    const QJsonObject profile = server.get("/api/me", carol).object();
    QCOMPARE(profile.value(u"username"_s).toString(), u"carol"_s);
    QCOMPARE(profile.keys(), (QStringList{u"avatarUrl"_s, u"bio"_s, u"username"_s}));
}

void TestPictures::iconIsInTheGroup()
{
    const QByteArray group = makeGroup();
    const QByteArray other = makeGroup();
    const HttpReply uploaded = upload(group + "/icon", "icon", png(), alice);
    QCOMPARE(uploaded.status, 200);
    const QString url = uploaded.text(u"iconUrl"_s);
    QVERIFY(url.startsWith(u"/pictures/"_s));
    QCOMPARE(server.get(url.toLatin1(), alice).body, png());
    QCOMPARE(server.get(group, alice).text(u"iconUrl"_s), url);
    QCOMPARE(server.get(other, alice).text(u"iconUrl"_s), QString());
    const QJsonArray groups = server.get("/api/groups", alice).array();
    QCOMPARE(groups[groups.size() - 2][u"iconUrl"_s].toString(), url);
    QCOMPARE(groups.last()[u"iconUrl"_s].toString(), QString());
}

void TestPictures::secondUploadRemovesTheFirst_data()
{
    QTest::addColumn<bool>("icon");
    QTest::newRow("avatar") << false;
    QTest::newRow("icon") << true;
}

void TestPictures::secondUploadRemovesTheFirst()
{
    QFETCH(bool, icon);
    const QByteArray target = icon ? makeGroup() + "/icon" : avatarPath;
    const QByteArray field = icon ? "icon" : "avatar";
    const QString member = icon ? u"iconUrl"_s : u"avatarUrl"_s;
    const QByteArray first = upload(target, field, png(100, 'a'), alice).text(member).toLatin1();
    QCOMPARE(server.get(first, alice).status, 200);
    const QByteArray second = upload(target, field, png(100, 'b'), alice).text(member).toLatin1();
    QVERIFY(first != second);
    QCOMPARE(server.get(first, alice).status, 404);
    QCOMPARE(server.get(second, alice).body, png(100, 'b'));
    QVERIFY(upload(target, field, "no picture", alice).status != 200);
    QCOMPARE(server.get(second, alice).status, 200); // a refused one removes nothing
}

// What is replaced does not count, and what is refused changes nothing.
void TestPictures::picturesHaveSoMuchRoom()
{
    service::ApiSettings settings = ApiServer::usualSettings();
    settings.pictureBytes = 2000;
    const ApiServer small(settings);
    const QByteArray user = small.signUp(u"carol"_s);
    const auto send = [&](const QByteArray &target, const QByteArray &field, qsizetype size) {
        return small.call("POST", target, user, form(filePart(field, png(size))), formType);
    };
    QCOMPARE(send(avatarPath, "avatar", 1500).status, 200);
    QCOMPARE(send(avatarPath, "avatar", 1200).status, 200);
    const QString url = small.get("/api/me", user).text(u"avatarUrl"_s);
    const QJsonObject chess{{u"name"_s, u"Chess"_s}, {u"description"_s, u""_s}};
    const QByteArray icon =
        "/api/groups/" + small.post("/api/groups", chess, user).text(u"groupId"_s).toLatin1() + "/icon";
    QCOMPARE(send(icon, "icon", 800).status, 200);
    const HttpReply refused = send(icon, "icon", 801);
    QCOMPARE(refused.status, 409);
    QCOMPARE(refused.message(), u"Your pictures take as much room as the service has for one user."_s);
    QCOMPARE(send(avatarPath, "avatar", 1201).status, 409);
    QCOMPARE(small.get("/api/me", user).text(u"avatarUrl"_s), url);
    QCOMPARE(small.get(url.toLatin1(), user).body.size(), 1200);
}

void TestPictures::onlyMembersChangeTheIcon()
{
    const QByteArray group = makeGroup();
    const QString url = upload(group + "/icon", "icon", png(), alice).text(u"iconUrl"_s);
    const HttpReply refused = upload(group + "/icon", "icon", png(), bob);
    QCOMPARE(refused.status, 404);
    QCOMPARE(upload("/api/groups/none/icon", "icon", png(), bob).body, refused.body);
    QCOMPARE(server.get(group, alice).text(u"iconUrl"_s), url);
    QCOMPARE(server.get(url.toLatin1(), alice).status, 200);
}

void TestPictures::onlySignedInUsersSeePictures()
{
    const QByteArray url = upload(avatarPath, "avatar", png(), alice).text(u"avatarUrl"_s).toLatin1();
    QCOMPARE(server.get(url, bob).status, 200);
    QCOMPARE(server.get(url, {}).status, 401);
    QCOMPARE(server.get(url, {}).headers.value("cache-control"), QByteArray("no-store"));
}

void TestPictures::unknownPicture()
{
    const HttpReply reply = server.get("/pictures/" + QByteArray(40, '0'), alice);
    QCOMPARE(reply.status, 404);
    QCOMPARE(reply.headers.value("cache-control"), QByteArray("no-store"));
    QVERIFY(!reply.message().isEmpty());
    QCOMPARE(server.get("/pictures/..%2Ftest.sqlite", alice).status, 404);
    QCOMPARE(server.get("/pictures/%25", alice).status, 404);
}

void TestPictures::uploadOfTheToolkitIsTaken_data()
{
    QTest::addColumn<QByteArray>("suffix");
    QTest::newRow("png") << QByteArray("png");
    QTest::newRow("no suffix") << QByteArray();
    QTest::newRow("other letters") << QByteArray("\xc3\xa5");
    QTest::newRow("blank") << QByteArray("p n g");
}

// Written by the toolkit, with a boundary and headers of its choosing, as the client sends it.
void TestPictures::uploadOfTheToolkitIsTaken()
{
    QFETCH(QByteArray, suffix);
    QHttpMultiPart body(QHttpMultiPart::FormDataType);
    QHttpPart part;
    part.setRawHeader("Content-Disposition", R"(form-data; name="avatar"; filename="avatar.)" + suffix + '"');
    part.setRawHeader("Content-Type", "image/" + suffix);
    part.setBody(png(300'000));
    body.append(part);
    QNetworkRequest request(
        QUrl(u"http://127.0.0.1:%1"_s.arg(server.port()) + QString::fromLatin1(avatarPath)));
    request.setRawHeader("Cookie", alice);
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(network.post(request, &body));
    QVERIFY(QSignalSpy(reply.get(), &QNetworkReply::finished).wait(20'000));
    QCOMPARE(reply->error(), QNetworkReply::NoError);
    QCOMPARE(server.get(avatarOf(alice).toLatin1(), alice).body, png(300'000));
}

void TestPictures::sizes_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<int>("status");
    const qsizetype most = 5 * 1024 * 1024;
    QTest::newRow("signature alone") << pngBegin.size() << 200;
    QTest::newRow("5 MiB") << most << 200;
    QTest::newRow("one byte more") << most + 1 << 413;
}

void TestPictures::sizes()
{
    QFETCH(qsizetype, size);
    QFETCH(int, status);
    const QString before = avatarOf(alice);
    const HttpReply reply = upload(avatarPath, "avatar", png(size), alice);
    QCOMPARE(reply.status, status);
    QCOMPARE(avatarOf(alice) != before, status == 200);
    if (status == 200)
        QVERIFY(server.get(avatarOf(alice).toLatin1(), alice).body == png(size));
    else
        QCOMPARE(reply.message(), u"A picture may have at most 5 MB."_s);
}

void TestPictures::refusedContent_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const QByteArray &body, int status,
                        const QByteArray &type = formType) { QTest::newRow(name) << body << type << status; };
    row("text in a file called png", form(filePart("avatar", "text")), 415);
    row("SVG", form(filePart("avatar", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>")), 415);
    row("page", form(filePart("avatar", "<html><script>alert(1)</script>")), 415);
    row("empty file", form(filePart("avatar", "")), 400);
    row("other field", form(filePart("icon", png())), 400);
    row("broken form", form(filePart("avatar", png())).chopped(10), 400);
    row("empty body", "", 400);
    row("bare picture", png(), 415, "image/png");
    row("JSON", "{}", 415, "application/json");
}

void TestPictures::refusedContent()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, type);
    QFETCH(int, status);
    const QString before = avatarOf(alice);
    const HttpReply reply = server.call("POST", avatarPath, alice, body, type);
    QCOMPARE(reply.status, status);
    QVERIFY(!reply.message().isEmpty());
    QCOMPARE(avatarOf(alice), before);
}

TIDELOFT_TEST_MAIN(TestPictures)
#include "tst_picture_handlers.moc"
