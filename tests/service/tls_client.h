// A client under TLS that sends exactly the bytes it is given.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/http_client.h"

#include <QSslConfiguration>
#include <QSslSocket>

namespace tideloft::tests
{

/// What a client asks for, and whom it believes.
struct TlsPeer {
    QString name;                       ///< sent to the server, and looked for in its certificate
    QString authorityFile;              ///< PEM
    QHostAddress from = QHostAddress(); ///< the client's own address; any where it is null
    QByteArray before = QByteArray();   ///< sent in the clear ahead of TLS
};

class TlsClient : public HttpExchange<QSslSocket>
{
public:
    TlsClient(quint16 port, const TlsPeer &peer)
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(QSslCertificate::fromPath(peer.authorityFile));
        socket.setSslConfiguration(configuration);
        if (!peer.from.isNull())
            socket.bind(peer.from);
        socket.setPeerVerifyName(peer.name);
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        socket.waitForConnected();
        socket.write(peer.before);
        socket.startClientEncryption();
        socket.waitForEncrypted();
    }

    bool isEncrypted() const { return socket.isEncrypted(); }
};

} // namespace tideloft::tests
