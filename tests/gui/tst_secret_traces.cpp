// What the client leaves behind in its log, its files, its settings and the place for temporary files: no
// password, no text, no key but in the private key's own file, no sign-in of the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/wrapped_keys.h"
#include "tests/gui/traced_person.h"
#include "tests/support/loopback_service.h"
#include "tests/support/patience.h"
#include "tests/support/private_numbers.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/secret_search.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>

using namespace Qt::StringLiterals;
using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

const QByteArray cookie = QByteArrayLiteral("c0ffee5e55104c00c1e7a1deb0b");
const QByteArray history = QByteArrayLiteral("GET /api/chat/history/bob");
const QByteArray searched = QByteArrayLiteral("GET /api/users/search");

QByteArray objectJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// What the client holds under bob's name in an array of wrapped keys is opened with bob's key.
QByteArray contentKeyOf(const QJsonArray &wrapped, const KeyPair &bob)
{
    const QByteArray key = fromBase64Text(findWrappedKeyForDevice(wrapped, u"bobs"_s));
    return rsaOaepDecrypt(fromBase64Text(bob.privateKey), key);
}

/// A machine on which nobody has started the client before.
class Machine
{
public:
    Machine()
    {
        for (const QString &place : {u"config"_s, u"data"_s, u"cache"_s, u"state"_s, u"run"_s, u"tmp"_s})
            QDir(home.path()).mkpath(place);
        QFile::setPermissions(path(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    [[nodiscard]] QString path(const QString &below) const { return home.filePath(below); }

    void start(const QString &origin, const QString &loggingRules)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, home.path());
        for (const auto &[variable, place] : {std::pair{u"XDG_CONFIG_HOME"_s, u"config"_s},
                                              {u"XDG_DATA_HOME"_s, u"data"_s},
                                              {u"XDG_CACHE_HOME"_s, u"cache"_s},
                                              {u"XDG_STATE_HOME"_s, u"state"_s},
                                              {u"XDG_RUNTIME_DIR"_s, u"run"_s},
                                              {u"TMPDIR"_s, u"tmp"_s}})
            environment.insert(variable, path(place));
        environment.insert(u"TIDELOFT_E2E_ORIGIN"_s, origin);
        environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
        environment.remove(u"QT_LOGGING_RULES"_s);
        if (!loggingRules.isEmpty())
            environment.insert(u"QT_LOGGING_RULES"_s, loggingRules);
        client.setProcessEnvironment(environment);
        client.setProcessChannelMode(QProcess::MergedChannels);
        client.start(QString::fromUtf8(TRACED_PERSON_PROGRAM), QStringList());
    }

    QTemporaryDir home;
    QProcess client;
};

} // namespace

class TestSecretTraces : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLeftBehind_data();
    void nothingIsLeftBehind();

private:
    void prepareAnswers();
    QJsonObject writtenByBob(const QString &text, const QJsonObject &device);
    void answerWithMessages();
    void addSecrets(const Machine &machine);

    const KeyPair bob = makeKeyPair();
    std::unique_ptr<LoopbackService> service;
    SecretSearch secrets;
    QList<QByteArray> contentKeys;
};

void TestSecretTraces::prepareAnswers()
{
    const HeaderList signedIn{{"Set-Cookie", "session=" + cookie + "; Path=/; HttpOnly"}};
    service->answerOnce("POST /api/auth/login", 401, R"({"message":"Wrong password"})");
    service->answerOnce("POST /api/auth/login", 200, "{}", signedIn);
    service->answer("POST /api/auth/login", 401, R"({"error":"Wrong again"})");
    service->answerOnce("POST /api/auth/register", 409, R"({"message":"Name taken"})");
    service->answer("POST /api/auth/register", 200, "{}", signedIn);
    service->answer("GET /api/me", 200, R"({"username":"alice"})");
    service->answer("POST /api/chat/device-key", 500, R"({"message":"No room for keys"})");
    service->answer("GET /api/groups", 200, R"([{"groupId":"g1","name":"Lagoon"}])");
    service->answer("POST /api/profile/update", 500, "{");
    service->answer(searched, 200, R"([{"username":"carol"}])");
    service->hold("GET /api/chat/device-keys/me");
    service->hold(requests::listConversations);
    service->hold(searched);
    const QByteArray bobsDevice = objectJson({{u"keys"_s, QJsonArray{bob.device(u"bobs"_s)}}});
    for (qsizetype i = 0; i <= sentTexts.size(); ++i)
        service->answerOnce(requests::keysOfBob, 200, bobsDevice);
    service->answer(requests::keysOfBob, 200,
                    R"({"keys":[{"deviceId":"bobs","publicKeyBase64":"bm8ga2V5"}]})");
    for (qsizetype i = 0; i < sentTexts.size(); ++i)
        service->answerOnce(requests::sendMessage, 200, "{}");
    service->answer(requests::sendMessage, 507, R"({"message":"The service is full"})");
}

QJsonObject TestSecretTraces::writtenByBob(const QString &text, const QJsonObject &device)
{
    const EncryptedEnvelope envelope = encryptMessageEnvelope(text, {device, bob.device(u"bobs"_s)}, {});
    contentKeys.append(contentKeyOf(envelope.recipientKeys, bob));
    return {{u"from"_s, u"bob"_s},          {u"peer"_s, u"bob"_s},
            {u"encrypted"_s, true},         {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},   {u"recipientKeys"_s, envelope.recipientKeys},
            {u"senderKeys"_s, QJsonArray{}}};
}

// Once the client has said its public key.
void TestSecretTraces::answerWithMessages()
{
    const QJsonObject said =
        QJsonDocument::fromJson(service->lastRequest("POST /api/chat/device-key").body).object();
    const QJsonObject device{{u"deviceId"_s, said[u"deviceId"]}, {u"publicKeyBase64"_s, said[u"publicKey"]}};
    QJsonArray items;
    for (const QString &text : receivedTexts)
        items.append(writtenByBob(text, device));
    QJsonObject damaged = items.first().toObject();
    damaged[u"iv"_s] = u"AAAAAAAAAAAAAAAA"_s;
    items.append(damaged);
    const QByteArray whole = QJsonDocument(items).toJson();
    service->answerOnce(history, 200, whole.left(whole.size() / 2));
    service->answer(history, 200, whole);
    service->answer("GET /api/chat/device-keys/me", 200, objectJson({{u"keys"_s, QJsonArray{device}}}));
    service->answerOnce(requests::listConversations, 500, whole);
    service->answer(requests::listConversations, 200, QJsonDocument(QJsonArray{items.at(2)}).toJson());
    service->release("GET /api/chat/device-keys/me");
    service->release(requests::listConversations);
}

void TestSecretTraces::addSecrets(const Machine &machine)
{
    QFile file(machine.path(u"data/TideLoft/TideLoft/chat_private_key.b64"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    for (const QByteArray &number : privateNumbers(QByteArray::fromBase64(file.readAll())))
        secrets.addLongKey(u"private key"_s, number);
    for (const RecordedRequest &request : service->requests(requests::sendMessage))
        contentKeys.append(
            contentKeyOf(QJsonDocument::fromJson(request.body)[u"recipientKeys"].toArray(), bob));
    QCOMPARE(contentKeys.size(), receivedTexts.size() + sentTexts.size() + 1);
    for (const QByteArray &key : std::as_const(contentKeys)) {
        QCOMPARE(key.size(), 32);
        secrets.addKey(u"content key"_s, key);
    }
    secrets.addText(u"password"_s, typedPassword);
    secrets.addText(u"wrong password"_s, wrongPassword);
    secrets.addText(u"cookie"_s, QString::fromLatin1(cookie));
    for (const QString &text : receivedTexts + sentTexts + QStringList{refusedText, unsealedText})
        secrets.addText(u"message"_s, text);
}

void TestSecretTraces::nothingIsLeftBehind_data()
{
    QTest::addColumn<QString>("loggingRules");
    QTest::newRow("started as usual") << QString();
    QTest::newRow("with every category of the toolkit's") << u"*=true"_s;
}

void TestSecretTraces::nothingIsLeftBehind()
{
    QFETCH(const QString, loggingRules);
    service = std::make_unique<LoopbackService>();
    secrets = {};
    contentKeys.clear();
    prepareAnswers();
    Machine machine;
    machine.start(service->url(), loggingRules);
    const auto hasSignedIn = [this] {
        return service->count("POST /api/chat/device-key") > 0
               && service->count(requests::listConversations) > 0;
    };
    if (!waitFor(hasSignedIn, 12 * patience()))
        QFAIL(machine.client.readAll().right(2'000).constData());
    answerWithMessages();
    const auto looksAround = [this] { return service->count(searched) > 0; };
    if (!waitFor(looksAround, 12 * patience()))
        QFAIL(machine.client.readAll().right(2'000).constData());
    addSecrets(machine);
    const QStringList own{u"data/TideLoft/TideLoft/chat_private_key.b64: private key"_s};
    QCOMPARE(secrets.foundBelow(machine.home.path()), own); // while all of it is open
    service->release(searched);
    QTRY_COMPARE_WITH_TIMEOUT(machine.client.state(), QProcess::NotRunning, 6 * patience());
    const QByteArray log = machine.client.readAll();
    QVERIFY2(machine.client.exitStatus() == QProcess::NormalExit && machine.client.exitCode() == 0,
             log.right(2'000).constData());
    QVERIFY(log.contains("Device key registration failed: No room for keys"));
    QCOMPARE(log.contains("qt."), !loggingRules.isEmpty());
    QCOMPARE(service->lastRequest(requests::sendMessage).header("Cookie"), "session=" + cookie);
    QCOMPARE(secrets.foundBelow(machine.home.path()), own);
    for (const QByteArray &line : log.split('\n')) {
        QStringList found = secrets.foundIn(line);
        if (line.startsWith("qt.accessibility.")) // it lists what a screen reader can read aloud
            found.removeAll(u"message"_s);
        QVERIFY2(found.isEmpty(), found.join(u", "_s).toUtf8() + " in " + line.left(300));
    }
    QVERIFY(!loggingRules.isEmpty() || secrets.foundIn(log).isEmpty());
}

TIDELOFT_TEST_MAIN(TestSecretTraces)
#include "tst_secret_traces.moc"
