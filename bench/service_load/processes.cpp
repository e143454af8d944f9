// Starting and ending processes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/processes.h"

#include <QCoreApplication>
#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

// Also when a measurement breaks off.
void endWithThisProgram(QProcess &process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

bool answers(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    return socket.waitForConnected(100);
}

} // namespace

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Could not write %s", qPrintable(path));
}

Folder::Folder() : directory(QCoreApplication::applicationDirPath() + u"/load-XXXXXX"_s)
{
    if (!directory.isValid())
        qFatal("Could not make a folder: %s", qPrintable(directory.errorString()));
}

ClientContext newClientContext()
{
    ClientContext context(SSL_CTX_new(TLS_client_method()), &SSL_CTX_free);
    SSL_CTX_set_mode(context.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER
                                        | SSL_MODE_RELEASE_BUFFERS);
    return context;
}

ServiceProcess::ServiceProcess(const Folder &home, Transport transport, QStringList more)
    : folder(home),
      options(std::move(more))
{
    process.setStandardErrorFile(folder.path(u"service.log"_s));
    endWithThisProgram(process);
    options << u"--connections"_s << u"100000"_s << u"--sign-ins-per-minute"_s << u"0"_s;
    if (!options.contains(u"--database"_s))
        options << u"--database"_s << folder.path(u"service.sqlite"_s);
    if (!options.contains(u"--connections-per-address"_s))
        options << u"--connections-per-address"_s << u"100000"_s;
    if (transport == Transport::Plain)
        return;
    const QString line =
        u"req -x509 -newkey rsa:2048 -nodes -days 30 -subj /CN=localhost -keyout %1 -out %2"_s;
    const QString key = folder.path(u"key.pem"_s);
    const QString certificate = folder.path(u"cert.pem"_s);
    QProcess openssl;
    openssl.start(u"openssl"_s, line.arg(key, certificate).split(u' '));
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        qFatal("No certificate could be made.");
    options << u"--tls-cert"_s << certificate << u"--tls-key"_s << key;
    context = newClientContext();
}

ServiceProcess::~ServiceProcess()
{
    stop();
}

void ServiceProcess::start()
{
    process.start(QStringLiteral(TIDELOFT_SERVICE_PROGRAM),
                  QStringList{u"--port"_s, QString::number(usedPort)} + options);
    while (!process.canReadLine()) {
        if (!process.waitForReadyRead(20'000))
            qFatal("The service does not come up; see %s", qPrintable(folder.path(u"service.log"_s)));
    }
    const QByteArray line = process.readLine().trimmed();
    usedPort = line.mid(line.lastIndexOf(':') + 1).toUShort();
}

void ServiceProcess::kill()
{
    process.kill();
    process.waitForFinished();
}

void ServiceProcess::stop()
{
    if (!isRunning())
        return;
    process.terminate();
    if (!process.waitForFinished())
        kill();
}

double ServiceProcess::residentMiB() const
{
    QFile file(u"/proc/%1/statm"_s.arg(processId()));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE))
           / 1048576;
}

Nginx::Nginx(const Folder &folder) : usedPort(freePort())
{
    const QString configuration = folder.path(u"nginx.conf"_s);
    writeFile(configuration,
              u"daemon off; master_process off; error_log stderr; pid %1/nginx.pid;\n"
              "events { worker_connections 4096; }\n"
              "http { access_log %1/access.log; sendfile on; tcp_nopush on; types {}\n"
              " default_type application/json; keepalive_requests 1000000000;\n"
              " client_body_temp_path %1/body; proxy_temp_path %1/proxy; fastcgi_temp_path %1/fastcgi;\n"
              " uwsgi_temp_path %1/uwsgi; scgi_temp_path %1/scgi;\n"
              " server { listen 127.0.0.1:%2; root %1/www; } }\n"_s.arg(folder.path(u"."_s))
                  .arg(usedPort)
                  .toUtf8());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    endWithThisProgram(process);
    process.start(u"/usr/sbin/nginx"_s, {u"-c"_s, configuration, u"-e"_s, folder.path(u"nginx.log"_s)});
    for (int i = 0; i < 100 && !answers(usedPort); ++i)
        QThread::msleep(50);
    if (!answers(usedPort))
        qFatal("nginx does not come up.");
}

Nginx::~Nginx()
{
    process.terminate();
    process.waitForFinished();
}

} // namespace tideloft::bench
