// The service and nginx, as processes of their own on free ports of this machine.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

#include <openssl/ssl.h>

namespace tideloft::bench
{

/// A folder on the disk that the build lies on: what is in memory only would make every sync free.
class Folder
{
public:
    Folder();
    QString path(const QString &name) const { return directory.filePath(name); }

private:
    QTemporaryDir directory;
};

using ClientContext = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;

/// For clients that do not look whom they talk to: that is not in doubt here.
ClientContext newClientContext();

void writeFile(const QString &path, const QByteArray &content);

class ServiceProcess
{
public:
    enum class Transport { Plain, Tls };

    /// The database is "service.sqlite" in HOME, unless MORE says where it is. No limit holds that one
    /// address would meet.
    ServiceProcess(const Folder &home, Transport transport, QStringList more = {});
    Q_DISABLE_COPY_MOVE(ServiceProcess)
    ~ServiceProcess();

    /// Ends everything with a message when the service does not come up. The port stays the same.
    void start();
    void kill();
    void stop();
    bool isRunning() const { return process.state() == QProcess::Running; }

    quint16 port() const { return usedPort; }
    pid_t processId() const { return static_cast<pid_t>(process.processId()); }
    double residentMiB() const;

    /// For clients; null where the service speaks plain HTTP.
    SSL_CTX *clientContext() const { return context.get(); }

private:
    const Folder &folder;
    QStringList options;
    quint16 usedPort = 0;
    QProcess process;
    ClientContext context{nullptr, &SSL_CTX_free};
};

/// Serves the folder's "www", over plain HTTP, with one process and Debian's usual settings.
class Nginx
{
public:
    explicit Nginx(const Folder &folder);
    Q_DISABLE_COPY_MOVE(Nginx)
    ~Nginx();

    quint16 port() const { return usedPort; }

private:
    quint16 usedPort = 0;
    QProcess process;
};

} // namespace tideloft::bench
