// Which TLS servers the client talks to: those with version 1.3 that somebody it trusts vouches for.
#include "net/api_client.h"
#include "net/tls_policy.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"

#include <QProcess>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using tideloft::net::applyTlsPolicy;
using namespace tideloft::tests;

namespace
{

// A service under TLS that gives everybody the same answer.
class TlsService : public QSslServer
{
public:
    TlsService(const QSslConfiguration &configuration, const QByteArray &answer)
    {
        setSslConfiguration(configuration);
        connect(this, &QSslServer::pendingConnectionAvailable, this, [this, answer] {
            while (QTcpSocket *connection = nextPendingConnection()) {
                connect(connection, &QTcpSocket::readyRead, connection, [this, connection, answer] {
                    if (connection->readAll().contains("\r\n\r\n")) {
                        ++answered;
                        connection->write(answer);
                    }
                });
            }
        });
        if (!listen(QHostAddress::LocalHost))
            qFatal("The service found no port: %s", qPrintable(errorString()));
    }

    int answered = 0;
};

const QByteArray profile =
    QByteArrayLiteral("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n{\"username\":\"alice\"}");

} // namespace

class TestTlsPolicy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void theDefaultBecomesTls13();
    void tls13WithATrustedAuthorityIsAccepted();
    void tls12IsRefused();
    void withoutThePolicyTls12WouldBeAccepted();
    void anUnknownAuthorityIsRefused();
    void anotherHostsCertificateIsRefused();
    void aRedirectToPlainHttpIsRefused();

private:
    QSslConfiguration serverConfiguration(QSsl::SslProtocol protocol) const;
    QString fetchMe(const TlsService &service, const QString &host = u"127.0.0.1"_s) const;

    QSslConfiguration untouched = QSslConfiguration::defaultConfiguration();
    QSslCertificate certificate;
    QSslKey key;
};

// Made anew for every run: a certificate that is checked in expires one day, and its key is no secret.
void TestTlsPolicy::initTestCase()
{
    const QTemporaryDir directory;
    QProcess openssl;
    openssl.setWorkingDirectory(directory.path());
    openssl.start(u"openssl"_s,
                  {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                   u"-subj"_s, u"/CN=TideLoft test"_s, u"-addext"_s, u"subjectAltName=IP:127.0.0.1"_s,
                   u"-keyout"_s, u"key.pem"_s, u"-out"_s, u"cert.pem"_s});
    QVERIFY(openssl.waitForFinished());
    QCOMPARE(openssl.exitCode(), 0);
    QFile keyFile(directory.filePath(u"key.pem"_s));
    QVERIFY(keyFile.open(QIODevice::ReadOnly));
    key = QSslKey(&keyFile, QSsl::Rsa);
    certificate = QSslCertificate::fromPath(directory.filePath(u"cert.pem"_s)).value(0);
    QVERIFY(!key.isNull() && !certificate.isNull());
}

void TestTlsPolicy::init()
{
    QSslConfiguration::setDefaultConfiguration(untouched);
    setTrustAnchors({certificate});
}

QSslConfiguration TestTlsPolicy::serverConfiguration(QSsl::SslProtocol protocol) const
{
    QSslConfiguration configuration = untouched;
    configuration.setLocalCertificate(certificate);
    configuration.setPrivateKey(key);
    configuration.setProtocol(protocol);
    return configuration;
}

// What a client says of the service: the user's name, or "refused: " and the toolkit's text.
QString TestTlsPolicy::fetchMe(const TlsService &service, const QString &host) const
{
    setServiceBaseUrl(u"https://%1:%2"_s.arg(host).arg(service.serverPort()));
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::meLoaded);
    QSignalSpy failed(&client, &ApiClient::meFailed);
    client.fetchMe();
    if (!QTest::qWaitFor([&] { return loaded.size() + failed.size() > 0; }))
        return u"no answer"_s;
    return failed.isEmpty() ? client.currentUsername() : u"refused: "_s + failed.first().first().toString();
}

void TestTlsPolicy::theDefaultBecomesTls13()
{
    applyTlsPolicy();
    const QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    QCOMPARE(configuration.protocol(), QSsl::TlsV1_3OrLater);
    QVERIFY(configuration.caCertificates().contains(certificate));
    QVERIFY(configuration.peerVerifyMode() != QSslSocket::VerifyNone);
}

void TestTlsPolicy::tls13WithATrustedAuthorityIsAccepted()
{
    applyTlsPolicy();
    const TlsService service(serverConfiguration(QSsl::TlsV1_3OrLater), profile);
    QCOMPARE(fetchMe(service), u"alice"_s);
    QCOMPARE(service.answered, 1);
}

void TestTlsPolicy::tls12IsRefused()
{
    applyTlsPolicy();
    const TlsService service(serverConfiguration(QSsl::TlsV1_2), profile);
    const QString outcome = fetchMe(service);
    QVERIFY2(outcome.startsWith(u"refused: SSL handshake failed"_s), qPrintable(outcome));
    QCOMPARE(service.answered, 0);
}

// The same server, to show that it is the policy that refuses it.
void TestTlsPolicy::withoutThePolicyTls12WouldBeAccepted()
{
    QSslConfiguration trusting = untouched;
    trusting.addCaCertificate(certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    const TlsService service(serverConfiguration(QSsl::TlsV1_2), profile);
    QCOMPARE(fetchMe(service), u"alice"_s);
}

void TestTlsPolicy::anUnknownAuthorityIsRefused()
{
    setTrustAnchors({});
    applyTlsPolicy();
    const TlsService service(serverConfiguration(QSsl::TlsV1_3OrLater), profile);
    const QString outcome = fetchMe(service);
    QVERIFY2(outcome.startsWith(u"refused: SSL handshake failed"_s), qPrintable(outcome));
    QCOMPARE(service.answered, 0);
}

void TestTlsPolicy::anotherHostsCertificateIsRefused()
{
    applyTlsPolicy();
    const TlsService service(serverConfiguration(QSsl::TlsV1_3OrLater), profile);
    const QString outcome = fetchMe(service, u"localhost"_s); // the certificate is for 127.0.0.1 only
    QVERIFY2(outcome.startsWith(u"refused: SSL handshake failed"_s), qPrintable(outcome));
    QCOMPARE(service.answered, 0);
}

void TestTlsPolicy::aRedirectToPlainHttpIsRefused()
{
    applyTlsPolicy();
    const TlsService service(
        serverConfiguration(QSsl::TlsV1_3OrLater),
        "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/api/me\r\nContent-Length: 0\r\n\r\n");
    QCOMPARE(fetchMe(service), u"refused: Insecure redirect"_s);
}

TIDELOFT_TEST_MAIN(TestTlsPolicy)
#include "tst_tls_policy.moc"
