// Publishing a device's key, and reading keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/device_rules.h"
#include "service/store/device_keys.h"
#include "tests/service/api_fixture.h"
#include "tests/service/key_material.h"
#include "tests/support/test_main.h"

#include <openssl/ui.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestDeviceKeys : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void passwordProtectedKeyAsksNobody();
    void devices_data();
    void devices();
    void registeringAgainReplacesTheKey();
    void devicesAreLimited();
    void keysOfAnotherUser();
    void keysOfNobody();

private:
    static QJsonObject body(const QJsonValue &id, const QJsonValue &key = rsaPublicKey(2048))
    {
        return {{u"deviceId"_s, id}, {u"deviceName"_s, u"TideLoft Desktop"_s}, {u"publicKey"_s, key}};
    }
};

void TestDeviceKeys::keys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("2048 bits") << rsaPublicKey(2048) << true;
    QTest::newRow("4096 bits") << rsaPublicKey(4096) << true;
    QTest::newRow("PEM text") << asPem(rsaPublicKey(2048)) << true;
    QTest::newRow("blanks around") << (u" "_s + rsaPublicKey(2048) + u"\n"_s) << true;
    QTest::newRow("2047 bits") << rsaPublicKey(2047) << false;
    QTest::newRow("4097 bits") << rsaPublicKey(4097) << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("no Base64") << u"!!!!"_s << false;
    QTest::newRow("no key") << u"AAAA"_s << false;
    QTest::newRow("cut off") << rsaPublicKey(2048).left(200) << false;
    const QByteArray der = QByteArray::fromBase64(rsaPublicKey(2048).toLatin1());
    QTest::newRow("bytes behind the key") << QString::fromLatin1((der + "x").toBase64()) << false;
    // The Ed25519 key of RFC 8410, section 10.1.
    QTest::newRow("other algorithm") << u"MCowBQYDK2VwAyEAGb9ECWmEzf6FQbrBZ9w7lshQhqowtrbLDFw4rXAxZuE="_s
                                     << false;
}

void TestDeviceKeys::keys()
{
    QFETCH(QString, key);
    QFETCH(bool, accepted);
    QCOMPARE(isAcceptablePublicKey(key), accepted);
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    QCOMPARE(fixture.post("/api/chat/device-key", body(u"d1"_s, key), cookie).status, accepted ? 200 : 400);
    const QJsonArray keys =
        ApiFixture::object(fixture.get("/api/chat/device-keys/me", cookie))[u"keys"_s].toArray();
    QCOMPARE(keys.size(), accepted ? 1 : 0);
    if (accepted)
        QCOMPARE(keys[0][u"publicKeyBase64"_s].toString(), key);
}

void TestDeviceKeys::passwordProtectedKeyAsksNobody()
{
    static bool asked = false;
    UI_METHOD *prompt = UI_create_method("watched prompt");
    UI_method_set_opener(prompt, [](UI *) {
        asked = true;
        return 0;
    });
    UI_set_default_method(prompt);
    const QByteArray pem = "-----BEGIN PUBLIC KEY-----\nProc-Type: 4,ENCRYPTED\nDEK-Info: "
                           "AES-128-CBC,00112233445566778899AABBCCDDEEFF\n\n"
                           + QByteArray(64, 'x').toBase64() + "\n-----END PUBLIC KEY-----\n";
    const bool accepted = isAcceptablePublicKey(QString::fromLatin1(pem.toBase64()));
    UI_set_default_method(UI_OpenSSL());
    UI_destroy_method(prompt);
    QVERIFY(!accepted);
    QVERIFY(!asked);
}

void TestDeviceKeys::devices_data()
{
    QTest::addColumn<QJsonValue>("id");
    QTest::addColumn<int>("status");
    QTest::newRow("UUID") << QJsonValue(u"3f2b8c1e-9d4a-4b7e-8f00-1a2b3c4d5e6f"_s) << 200;
    QTest::newRow("128 characters") << QJsonValue(QString(128, u'x')) << 200;
    QTest::newRow("129 characters") << QJsonValue(QString(129, u'x')) << 400;
    QTest::newRow("empty") << QJsonValue(u""_s) << 400;
    QTest::newRow("blanks") << QJsonValue(u"  "_s) << 400;
    QTest::newRow("line break") << QJsonValue(u"a\nb"_s) << 400;
    QTest::newRow("number") << QJsonValue(7) << 400;
    QTest::newRow("SQL is only text") << QJsonValue(u"'); DROP TABLE users; --"_s) << 200;
}

void TestDeviceKeys::devices()
{
    QFETCH(QJsonValue, id);
    QFETCH(int, status);
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    QCOMPARE(fixture.post("/api/chat/device-key", body(id), cookie).status, status);
    const QJsonArray keys =
        ApiFixture::object(fixture.get("/api/chat/device-keys/me", cookie))[u"keys"_s].toArray();
    QCOMPARE(keys.size(), status == 200 ? 1 : 0);
    if (status == 200)
        QCOMPARE(keys[0][u"deviceId"_s], id);
}

void TestDeviceKeys::registeringAgainReplacesTheKey()
{
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    const QByteArray other = fixture.signUp(u"bob"_s);
    const QString second = rsaPublicKey(3072);
    QCOMPARE(fixture.post("/api/chat/device-key", body(u"d1"_s), other).status, 200);
    QCOMPARE(fixture.post("/api/chat/device-key", body(u"d1"_s), cookie).status, 200);
    QCOMPARE(fixture.post("/api/chat/device-key", body(u"d1"_s, second), cookie).status, 200);
    const QJsonObject expected{
        {u"deviceId"_s, u"d1"_s}, {u"deviceName"_s, u"TideLoft Desktop"_s}, {u"publicKeyBase64"_s, second}};
    const QJsonObject mine = ApiFixture::object(fixture.get("/api/chat/device-keys/me", cookie));
    QCOMPARE(mine[u"keys"_s].toArray(), QJsonArray{expected});
    const QJsonObject others = ApiFixture::object(fixture.get("/api/chat/device-keys/me", other));
    QVERIFY(others[u"keys"_s][0][u"publicKeyBase64"_s] != second);
}

void TestDeviceKeys::devicesAreLimited()
{
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    const QString key = rsaPublicKey(2048);
    for (int i = 0; i < maximumDevices; ++i)
        QCOMPARE(fixture.post("/api/chat/device-key", body(u"d%1"_s.arg(i), key), cookie).status, 200);
    QCOMPARE(fixture.post("/api/chat/device-key", body(u"one more"_s, key), cookie).status, 409);
    QCOMPARE(fixture.post("/api/chat/device-key", body(u"d0"_s, key), cookie).status, 200);
}

void TestDeviceKeys::keysOfAnotherUser()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob-1"_s);
    const QString key = rsaPublicKey(2048);
    fixture.post("/api/chat/device-key", body(u"d1"_s, key), bob);
    for (const char *path : {"/api/chat/public-key/bob-1", "/api/chat/public-key/%42ob%2D1%20"}) {
        const QJsonObject reply = ApiFixture::object(fixture.get(path, alice));
        QCOMPARE(reply.keys(), (QStringList{u"keys"_s, u"username"_s}));
        QCOMPARE(reply[u"username"_s].toString(), u"bob-1"_s);
        QCOMPARE(reply[u"keys"_s][0][u"publicKeyBase64"_s].toString(), key);
    }
}

void TestDeviceKeys::keysOfNobody()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const Response response = fixture.get("/api/chat/public-key/nobody", alice);
    QCOMPARE(response.status, 404);
    QCOMPARE(ApiFixture::message(response), u"There is no user with this name."_s);
    const Response without = fixture.get("/api/chat/public-key/alice", alice);
    QCOMPARE(without.status, 200);
    QCOMPARE(ApiFixture::object(without)[u"keys"_s], QJsonValue(QJsonArray()));
}

TIDELOFT_TEST_MAIN(TestDeviceKeys)
#include "tst_key_handlers.moc"
