// A real nginx or HAProxy with the configuration that the package brings, and certificates for both sides.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPair>
#include <QProcess>
#include <QTemporaryDir>

namespace tideloft::tests
{

/// Makes PATH with this content.
void writeFile(const QString &path, const QByteArray &content);

/// A service on the port, or none: the balancer takes the port for one all the same.
struct Behind {
    quint16 one;
    quint16 two;
};

/// The balancer shows "front.pem", the services show "service.pem"; both are for "localhost".
class Balancer
{
public:
    Balancer();
    Q_DISABLE_COPY_MOVE(Balancer)
    virtual ~Balancer();

    /// The options with which a service stands behind it.
    QStringList serviceOptions() const;

    /// Starts on free ports, with both services on 127.0.0.1. False when it does not come up.
    bool start(const Behind &services);

    QString path(const QString &name) const { return folder.filePath(name); }

    quint16 endedPort = 0;  ///< TLS ends here
    quint16 passedPort = 0; ///< TLS is passed through; not nginx's

protected:
    using Filling = QList<QPair<QByteArray, QByteArray>>;

    /// The file of the package with every value in the place of the example's.
    QByteArray filledIn(const QString &name, const Filling &values) const;

    virtual QStringList prepare(const Behind &services) = 0; ///< program and arguments

private:
    void makeCertificate(const QString &name) const;
    bool comesUp();

    QTemporaryDir folder;
    QProcess process;
};

class Nginx : public Balancer
{
protected:
    QStringList prepare(const Behind &services) override;
};

class Haproxy : public Balancer
{
public:
    /// Of "one" or "two" in a back-end, as HAProxy itself tells: "UP", "DOWN", "UP 1/2".
    QByteArray stateOf(const QByteArray &backend, const QByteArray &server) const
    {
        return statistic("status", backend, server);
    }

    /// What a column of HAProxy's table of statistics says of a server, or of "BACKEND"; or nothing.
    QByteArray statistic(const QByteArray &name, const QByteArray &backend, const QByteArray &server) const;

    /// What HAProxy says of the package's file behind the configuration in FILE; empty when nothing is wrong.
    QByteArray problemsBehind(const QString &file);

protected:
    QStringList prepare(const Behind &services) override;
};

/// A port that was free a moment ago.
quint16 freePort();

} // namespace tideloft::tests
