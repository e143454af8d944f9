// Which TLS servers the client talks to: those with version 1.3 that somebody it trusts vouches for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "net/tls_policy.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"
#include "tests/support/tls_service.h"

#include <QSignalSpy>
#include <QSslSocket>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using tideloft::net::applyTlsPolicy;
using namespace tideloft::tests;

namespace
{

const QByteArray profile =
    QByteArrayLiteral("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n{\"username\":\"alice\"}");
const QString wrongHost = u"The host name did not match any of the valid hosts for this certificate"_s;

} // namespace

class TestTlsPolicy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theDefaultBecomesTls13();
    void tls13WithATrustedAuthorityIsAccepted();
    void tls12IsRefused();
    void withoutThePolicyTls12WouldBeAccepted();
    void whomItRefuses_data();
    void whomItRefuses();
    void anotherNameOfTheServerIsRefused();
    void withoutTheAuthorityNobodyIsTrusted();
    void aRedirectToPlainHttpIsRefused();
    void aRedirectToAnotherHost_data();
    void aRedirectToAnotherHost();

private:
    QString fetchMe(const TlsService &service, const QString &host = u"127.0.0.1"_s) const;

    QSslConfiguration untouched = QSslConfiguration::defaultConfiguration();
    const Certificates certificates;
};

void TestTlsPolicy::init()
{
    QSslConfiguration::setDefaultConfiguration(untouched);
    setTrustAnchors({certificates.authority()});
}

// What a client says of the service: the user's name, or "refused: " and the toolkit's text.
QString TestTlsPolicy::fetchMe(const TlsService &service, const QString &host) const
{
    setServiceBaseUrl(u"https://%1:%2"_s.arg(host).arg(service.serverPort()));
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::meLoaded);
    QSignalSpy failed(&client, &ApiClient::meFailed);
    client.fetchMe();
    if (!waitFor([&] { return loaded.size() + failed.size() > 0; }))
        return u"no answer"_s;
    return failed.isEmpty() ? client.currentUsername() : u"refused: "_s + failed.first().first().toString();
}

void TestTlsPolicy::theDefaultBecomesTls13()
{
    applyTlsPolicy();
    const QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    QCOMPARE(configuration.protocol(), QSsl::TlsV1_3OrLater);
    QVERIFY(configuration.caCertificates().contains(certificates.authority()));
    QVERIFY(configuration.peerVerifyMode() != QSslSocket::VerifyNone);
}

void TestTlsPolicy::tls13WithATrustedAuthorityIsAccepted()
{
    applyTlsPolicy();
    const TlsService service(certificates.server(u"good"_s, QSsl::TlsV1_3OrLater), profile);
    QCOMPARE(fetchMe(service), u"alice"_s);
    QCOMPARE(service.answered, 1);
}

void TestTlsPolicy::tls12IsRefused()
{
    applyTlsPolicy();
    const TlsService service(certificates.server(u"good"_s, QSsl::TlsV1_2), profile);
    const QString outcome = fetchMe(service);
    QVERIFY2(outcome.startsWith(u"refused: SSL handshake failed"_s), qPrintable(outcome));
    QCOMPARE(service.answered, 0);
}

// The same server, to show that it is the policy that refuses it.
void TestTlsPolicy::withoutThePolicyTls12WouldBeAccepted()
{
    QSslConfiguration trusting = untouched;
    trusting.addCaCertificate(certificates.authority());
    QSslConfiguration::setDefaultConfiguration(trusting);
    const TlsService service(certificates.server(u"good"_s, QSsl::TlsV1_2), profile);
    QCOMPARE(fetchMe(service), u"alice"_s);
}

void TestTlsPolicy::whomItRefuses_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("words");
    QTest::newRow("unknown authority")
        << u"stranger"_s << u"The issuer certificate of a locally looked up certificate could not be found"_s;
    QTest::newRow("self-signed") << u"self-signed"_s << u"The certificate is self-signed, and untrusted"_s;
    QTest::newRow("expired") << u"expired"_s << u"The certificate has expired"_s;
    QTest::newRow("other host") << u"other-host"_s << wrongHost;
}

void TestTlsPolicy::whomItRefuses()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, words);
    applyTlsPolicy();
    const TlsService service(certificates.server(kind), profile);
    QCOMPARE(fetchMe(service), u"refused: SSL handshake failed: "_s + words);
    QCOMPARE(service.answered, 0);
}

// An address that the certificate does not name, although the same server answers there.
void TestTlsPolicy::anotherNameOfTheServerIsRefused()
{
    applyTlsPolicy();
    const TlsService service(certificates.server(u"good"_s), profile);
    QCOMPARE(fetchMe(service, u"localhost"_s), u"refused: SSL handshake failed: "_s + wrongHost);
    QCOMPARE(service.answered, 0);
}

// The good certificate is good only because of its authority.
void TestTlsPolicy::withoutTheAuthorityNobodyIsTrusted()
{
    setTrustAnchors({});
    applyTlsPolicy();
    const TlsService service(certificates.server(u"good"_s), profile);
    const QString outcome = fetchMe(service);
    QVERIFY2(outcome.startsWith(u"refused: SSL handshake failed: "_s), qPrintable(outcome));
    QCOMPARE(service.answered, 0);
}

void TestTlsPolicy::aRedirectToPlainHttpIsRefused()
{
    applyTlsPolicy();
    const TlsService service(
        certificates.server(u"good"_s, QSsl::TlsV1_3OrLater),
        "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/api/me\r\nContent-Length: 0\r\n\r\n");
    QCOMPARE(fetchMe(service), u"refused: Insecure redirect"_s);
}

void TestTlsPolicy::aRedirectToAnotherHost_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("of its own name") << u"neighbour"_s << u"alice"_s;
    QTest::newRow("with the first one's certificate")
        << u"good"_s << u"refused: SSL handshake failed: "_s + wrongHost;
}

// The device's identifier goes along; the cookie belongs to the host that set it.
void TestTlsPolicy::aRedirectToAnotherHost()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, outcome);
    applyTlsPolicy();
    const TlsService other(certificates.server(kind), profile, QHostAddress(u"127.0.0.2"_s));
    const QByteArray place = "https://127.0.0.2:" + QByteArray::number(other.serverPort()) + "/api/me";
    const TlsService service(
        certificates.server(u"good"_s),
        "HTTP/1.1 307 Temporary Redirect\r\nSet-Cookie: session=one; Path=/\r\nLocation: " + place
            + "\r\nContent-Length: 0\r\n\r\n");
    QCOMPARE(fetchMe(service), outcome);
    QCOMPARE(service.answered, 1);
    QCOMPARE(other.answered, outcome == u"alice" ? 1 : 0);
    QCOMPARE(other.lastRequest.toLower().contains("x-device-token: "), outcome == u"alice");
    QVERIFY(!other.lastRequest.contains("session=one"));
}

TIDELOFT_TEST_MAIN(TestTlsPolicy)
#include "tst_tls_policy.moc"
