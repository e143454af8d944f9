// Starting the service, and writing the conversation as two clients would.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/seeded_service.h"

#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "net/api_client.h"
#include "net/tls_policy.h"
#include "tests/support/test_service_endpoint.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>
#include <QSslCertificate>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

const QString SeededService::password = u"a good password"_s;

namespace
{

void awaitOne(QSignalSpy &&spy, const char *what)
{
    if (spy.isEmpty() && !spy.wait(30'000))
        qFatal("This did not happen: %s", what);
}

void join(net::ApiClient &client, const QString &name)
{
    client.registerAccount(name, SeededService::password);
    awaitOne(QSignalSpy(&client, &net::ApiClient::registerSucceeded), "an account is made");
    client.login(name, SeededService::password, false);
    awaitOne(QSignalSpy(&client, &net::ApiClient::loginSucceeded), "a sign-in");
}

} // namespace

SeededService::SeededService()
{
    if (QProcess::execute(QStringLiteral(TIDELOFT_MAKE_CERTIFICATE), {directory.path()}) != 0)
        qFatal("No certificate could be made.");
    service.setStandardErrorFile(QProcess::nullDevice()); // it logs every request
    service.start(QStringLiteral(TIDELOFT_SERVICE_PROGRAM),
                  {u"--port"_s, u"0"_s, u"--database"_s, directory.filePath(u"service.sqlite"_s),
                   u"--tls-cert"_s, directory.filePath(u"server.pem"_s), u"--tls-key"_s,
                   directory.filePath(u"server-key.pem"_s)});
    while (!service.canReadLine()) {
        if (!service.waitForReadyRead(20'000))
            qFatal("The service does not come up.");
    }
    const QString line = QString::fromUtf8(service.readLine()).trimmed();
    tests::setServiceBaseUrl(u"https://localhost"_s + line.mid(line.lastIndexOf(u':')));
    tests::setTrustAnchors(QSslCertificate::fromPath(directory.filePath(u"ca.pem"_s)));
    net::applyTlsPolicy();
}

SeededService::~SeededService()
{
    service.terminate();
    service.waitForFinished();
}

void SeededService::seed(int count)
{
    net::ApiClient alice;
    net::ApiClient bob;
    if (!crypto::ensureKeyPair())
        qFatal("No key pair could be made.");
    const QString publicKey = crypto::readPublicKeyFile();
    join(alice, u"alice"_s);
    join(bob, u"bob"_s);
    alice.registerDeviceKey(publicKey);
    awaitOne(QSignalSpy(&alice, &net::ApiClient::deviceKeyRegistered), "a device is registered");
    const QJsonArray devices{
        QJsonObject{{u"deviceId"_s, alice.deviceId()}, {u"publicKeyBase64"_s, publicKey}}};
    for (int i = 0; i < count; ++i) {
        const auto sealed = crypto::encryptMessageEnvelope(
            u"Message number %1, which is about as long as most of them are."_s.arg(i), devices, {});
        bob.sendMessage(
            u"alice"_s,
            {sealed.ciphertextBase64, sealed.ivBase64, {}, {}, sealed.recipientKeys, sealed.senderKeys});
        awaitOne(QSignalSpy(&bob, &net::ApiClient::messageSent), "a message is sent");
    }
}

} // namespace tideloft::bench
