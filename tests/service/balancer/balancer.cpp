// Filling in, starting and ending.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/balancer/balancer.h"

#include <QDir>
#include <QLocalSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Could not read %s", qPrintable(path));
    return file.readAll();
}

QByteArray local(quint16 port)
{
    return "127.0.0.1:" + QByteArray::number(port);
}

bool isOpen(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    return socket.waitForConnected();
}

} // namespace

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Could not write %s", qPrintable(path));
}

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

Balancer::Balancer()
{
    makeCertificate(u"front"_s);
    makeCertificate(u"service"_s);
    writeFile(path(u"front-both.pem"_s),
              contentOf(path(u"front.pem"_s)) + contentOf(path(u"front-key.pem"_s)));
}

Balancer::~Balancer()
{
    process.terminate();
    process.waitForFinished();
}

void Balancer::makeCertificate(const QString &name) const
{
    const QString line = u"req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=%1 -addext "
                         "subjectAltName=DNS:localhost -keyout %2 -out %3"_s;
    const QString key = path(name + u"-key.pem"_s);
    QProcess openssl;
    openssl.start(u"openssl"_s, line.arg(name, key, path(name + u".pem"_s)).split(u' '));
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        qFatal("No certificate could be made.");
}

QStringList Balancer::serviceOptions() const
{
    return {u"--tls-cert"_s,      path(u"service.pem"_s), u"--tls-key"_s, path(u"service-key.pem"_s),
            u"--trusted-proxy"_s, u"127.0.0.1"_s};
}

// Another program may take a port before the balancer does, so other ones are tried then.
bool Balancer::start(const Behind &services)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    for (int attempt = 0; attempt < 5; ++attempt) {
        endedPort = freePort();
        passedPort = freePort();
        const QStringList line = prepare(services);
        process.start(line.constFirst(), line.mid(1));
        if (comesUp())
            return true;
        process.kill();
        process.waitForFinished();
    }
    return false;
}

bool Balancer::comesUp()
{
    return process.waitForStarted()
           && QTest::qWaitFor([this] { return process.state() == QProcess::NotRunning || isOpen(endedPort); },
                              10'000)
           && process.state() == QProcess::Running;
}

QByteArray Balancer::filledIn(const QString &name, const Filling &values) const
{
    QByteArray text = contentOf(QStringLiteral(PACKAGED_BALANCERS "/") + name);
    for (const auto &[example, value] : values) {
        if (!text.contains(example))
            qFatal("%s does not have %s", qPrintable(name), example.constData());
        text.replace(example, value);
    }
    return text;
}

QStringList Nginx::prepare(const Behind &services)
{
    const QByteArray site =
        filledIn(u"nginx.conf"_s, {{"10.0.0.11:8443", local(services.one)},
                                   {"10.0.0.12:8443", local(services.two)},
                                   {"listen 443", "listen " + local(endedPort)},
                                   {"[::]:443", "127.0.0.2:" + QByteArray::number(endedPort)},
                                   {"chat.example.org", "localhost"},
                                   {"/etc/tideloft/server.pem", path(u"front.pem"_s).toUtf8()},
                                   {"/etc/tideloft/server-key.pem", path(u"front-key.pem"_s).toUtf8()},
                                   {"/etc/ssl/certs/ca-certificates.crt", path(u"service.pem"_s).toUtf8()}});
    writeFile(path(u"site.conf"_s), site);
    const QString around =
        u"daemon off; master_process off; error_log stderr crit; pid %1/nginx.pid;\n"
        "events {}\n"
        "http { client_body_temp_path %1/body; proxy_temp_path %1/proxy;\n"
        " fastcgi_temp_path %1/fastcgi; uwsgi_temp_path %1/uwsgi; scgi_temp_path %1/scgi;\n"
        " include %1/site.conf; }\n"_s;
    writeFile(path(u"nginx.conf"_s), around.arg(path({})).toUtf8());
    return {u"/usr/sbin/nginx"_s, u"-c"_s, path(u"nginx.conf"_s), u"-e"_s, u"stderr"_s};
}

QStringList Haproxy::prepare(const Behind &services)
{
    const QByteArray own =
        filledIn(u"haproxy.cfg"_s, {{"10.0.0.11:8443", local(services.one)},
                                    {"10.0.0.12:8443", local(services.two)},
                                    {":::443 v4v6", local(endedPort)},
                                    {":::444 v4v6", local(passedPort)},
                                    {"/etc/haproxy/chat.example.org.pem", path(u"front-both.pem"_s).toUtf8()},
                                    {"chat.example.org", "localhost"},
                                    {"/etc/ssl/certs/ca-certificates.crt", path(u"service.pem"_s).toUtf8()}});
    writeFile(path(u"haproxy.cfg"_s), own);
    writeFile(path(u"global.cfg"_s),
              "global\n    maxconn 4000\n    stats socket " + path(u"ctl"_s).toUtf8() + "\n");
    return {u"/usr/sbin/haproxy"_s, u"-db"_s, u"-q"_s, u"-f"_s, path(u"global.cfg"_s), u"-f"_s,
            path(u"haproxy.cfg"_s)};
}

QByteArray Haproxy::statistic(const QByteArray &name, const QByteArray &backend,
                              const QByteArray &server) const
{
    QLocalSocket socket;
    socket.connectToServer(path(u"ctl"_s));
    socket.waitForConnected();
    socket.write("show stat\n");
    QByteArray table;
    while (socket.waitForReadyRead())
        table += socket.readAll();
    const QList<QByteArray> lines = table.split('\n');
    const qsizetype column = lines.constFirst().split(',').indexOf(name);
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(',');
        if (fields.value(0) == backend && fields.value(1) == server)
            return fields.value(column);
    }
    return {};
}

QByteArray Haproxy::problemsBehind(const QString &file)
{
    prepare({endedPort, passedPort});
    QProcess checking;
    checking.setProcessChannelMode(QProcess::MergedChannels);
    checking.start(u"/usr/sbin/haproxy"_s,
                   {u"-c"_s, u"-q"_s, u"-f"_s, file, u"-f"_s, path(u"haproxy.cfg"_s)});
    checking.waitForFinished();
    const QByteArray said = checking.readAll();
    return checking.exitCode() == 0 ? said : "refused: " + said;
}

} // namespace tideloft::tests
