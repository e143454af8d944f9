// Services under TLS, good ones and such as nobody should trust, with certificates made on the spot.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSslConfiguration>
#include <QSslServer>
#include <QTemporaryDir>

namespace tideloft::tests
{

/// A service under TLS that gives everybody the same answer.
class TlsService : public QSslServer
{
    Q_OBJECT

public:
    TlsService(const QSslConfiguration &configuration, const QByteArray &answer,
               const QHostAddress &address = QHostAddress(QHostAddress::LocalHost));
    int answered = 0;       ///< requests that came through
    QByteArray lastRequest; ///< the newest of them
};

/// An authority, and certificates of every kind. Made anew for every run: a certificate that is checked in
/// expires one day, and its key is no secret.
class Certificates
{
public:
    Certificates();
    QSslCertificate authority() const { return load(QStringLiteral("ca.pem")); }
    /// For a server that shows the certificate KIND: "good", "expired", "other-host", "neighbour" (for
    /// 127.0.0.2; all signed by the authority), "stranger" (signed by another one) or "self-signed".
    QSslConfiguration server(const QString &kind, QSsl::SslProtocol protocol = QSsl::TlsV1_3OrLater) const;

private:
    QSslCertificate load(const QString &file) const;
    void makeAuthority(const QString &name) const;
    void sign(const QString &kind, const QString &issuer, const QString &names, const QString &days) const;
    void openssl(const QStringList &arguments) const;

    QTemporaryDir directory;
};

} // namespace tideloft::tests
