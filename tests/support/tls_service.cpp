// Making of certificates with the command line's tool, and the service that shows them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/tls_service.h"

#include <openssl/opensslv.h>

#include <QFile>
#include <QProcess>
#include <QSslKey>
#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

// From OpenSSL 3.4 on no certificate ends before it begins; older ones know no other form than days.
QStringList validity(const QString &days)
{
    if (days.startsWith(u'-') && OPENSSL_VERSION_NUMBER >= 0x30400000L)
        return {u"-not_before"_s, u"20200101000000Z"_s, u"-not_after"_s, u"20200102000000Z"_s};
    return {u"-days"_s, days};
}

} // namespace

TlsService::TlsService(const QSslConfiguration &configuration, const QByteArray &answer,
                       const QHostAddress &address)
{
    setSslConfiguration(configuration);
    connect(this, &QSslServer::pendingConnectionAvailable, this, [this, answer] {
        while (QTcpSocket *connection = nextPendingConnection()) {
            connect(connection, &QTcpSocket::readyRead, connection, [this, connection, answer] {
                const QByteArray request = connection->readAll();
                if (request.contains("\r\n\r\n")) {
                    ++answered;
                    lastRequest = request;
                    connection->write(answer);
                }
            });
        }
    });
    if (!listen(address))
        qFatal("The service found no port: %s", qPrintable(errorString()));
}

Certificates::Certificates()
{
    makeAuthority(u"ca"_s);
    makeAuthority(u"other-ca"_s);
    const QString here = u"IP:127.0.0.1"_s;
    sign(u"good"_s, u"ca"_s, here, u"2"_s);
    sign(u"expired"_s, u"ca"_s, here, u"-1"_s);
    sign(u"other-host"_s, u"ca"_s, u"DNS:elsewhere.example"_s, u"2"_s);
    sign(u"neighbour"_s, u"ca"_s, u"IP:127.0.0.2"_s, u"2"_s);
    sign(u"stranger"_s, u"other-ca"_s, here, u"2"_s);
    openssl({u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s, u"-subj"_s,
             u"/CN=TideLoft test"_s, u"-addext"_s, u"subjectAltName="_s + here, u"-keyout"_s,
             u"self-signed-key.pem"_s, u"-out"_s, u"self-signed.pem"_s});
}

QSslConfiguration Certificates::server(const QString &kind, QSsl::SslProtocol protocol) const
{
    QFile key(directory.filePath(kind + u"-key.pem"_s));
    if (!key.open(QIODevice::ReadOnly))
        qFatal("There is no certificate %s", qPrintable(kind));
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(load(kind + u".pem"_s));
    configuration.setPrivateKey(QSslKey(&key, QSsl::Rsa));
    configuration.setProtocol(protocol);
    return configuration;
}

QSslCertificate Certificates::load(const QString &file) const
{
    return QSslCertificate::fromPath(directory.filePath(file)).value(0);
}

void Certificates::makeAuthority(const QString &name) const
{
    openssl({u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"3"_s, u"-subj"_s,
             u"/CN="_s + name, u"-keyout"_s, name + u"-key.pem"_s, u"-out"_s, name + u".pem"_s});
}

void Certificates::sign(const QString &kind, const QString &issuer, const QString &names,
                        const QString &days) const
{
    QFile extensions(directory.filePath(u"extensions"_s));
    if (!extensions.open(QIODevice::WriteOnly))
        qFatal("The extensions cannot be written");
    extensions.write("subjectAltName=" + names.toLatin1() + '\n');
    extensions.close();
    openssl({u"req"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-subj"_s, u"/CN=TideLoft test"_s,
             u"-keyout"_s, kind + u"-key.pem"_s, u"-out"_s, u"request.pem"_s});
    openssl(QStringList{u"x509"_s, u"-req"_s, u"-in"_s, u"request.pem"_s, u"-CA"_s, issuer + u".pem"_s,
                        u"-CAkey"_s, issuer + u"-key.pem"_s, u"-set_serial"_s, u"7"_s}
            + validity(days) + QStringList{u"-extfile"_s, u"extensions"_s, u"-out"_s, kind + u".pem"_s});
}

void Certificates::openssl(const QStringList &arguments) const
{
    QProcess process;
    process.setWorkingDirectory(directory.path());
    process.start(u"openssl"_s, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("openssl %s: %s", qPrintable(arguments.first()), process.readAllStandardError().constData());
}

} // namespace tideloft::tests
