// The service as a process of its own, with its database and certificate in a folder that goes away.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

namespace tideloft::tests
{

class Daemon
{
public:
    ~Daemon()
    {
        process.kill();
        process.waitForFinished();
    }

    /// Returns the exit code, or -1 when the program did not end by itself.
    int runToEnd(const QStringList &arguments)
    {
        process.start(QStringLiteral(TIDELOFTD), arguments);
        const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
        collect();
        return ended ? process.exitCode() : -1;
    }

    bool startPlain(const QStringList &more = {}) { return start(more); }

    bool startTls(const QStringList &more = {})
    {
        return makeCertificate()
               && start(more
                        + QStringList{QStringLiteral("--tls-cert"), certificateFile(),
                                      QStringLiteral("--tls-key"), keyFile()});
    }

    /// Starts the program and waits for nothing.
    bool startAndForget()
    {
        process.start(QStringLiteral(TIDELOFTD), usualArguments());
        return process.waitForStarted();
    }

    /// Waits until the program has printed so many lines.
    QByteArray outputOfLines(int count)
    {
        while (out.count('\n') < count && process.waitForReadyRead())
            out += process.readAllStandardOutput();
        return out;
    }

    /// Sends the signal and returns the exit code, or -1 when the program did not end by itself or is not
    /// there.
    int stop(int signal)
    {
        if (process.state() == QProcess::NotRunning)
            return -1; // its number is 0, which would name this process and all beside it
        ::kill(static_cast<pid_t>(process.processId()), signal);
        const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
        collect();
        return ended ? process.exitCode() : -1;
    }

    QString url(const QString &path) const { return origin + path; }
    quint16 port() const { return QStringView(origin).mid(origin.lastIndexOf(u':') + 1).toUShort(); }
    qint64 processId() const { return process.processId(); }
    QByteArray output() const { return out; }
    QByteArray errors() const { return err; }
    QString certificateFile() const { return path(QStringLiteral("cert.pem")); }
    QString keyFile() const { return path(QStringLiteral("key.pem")); }
    QString databaseFile() const { return path(QStringLiteral("test.sqlite")); }

    /// In the folder of the service.
    QString path(const QString &name) const { return folder.filePath(name); }

private:
    bool start(const QStringList &more)
    {
        process.start(QStringLiteral(TIDELOFTD), usualArguments() + more);
        if (!process.waitForReadyRead())
            return false;
        out = process.readAllStandardOutput();
        origin = QString::fromUtf8(out).section(u'\n', 0, 0).section(u' ', -1);
        return out.startsWith("listening on ");
    }

    QStringList usualArguments() const
    {
        return {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--database"), databaseFile()};
    }

    void collect()
    {
        out = process.readAllStandardOutput();
        err = process.readAllStandardError();
    }

    bool makeCertificate() const
    {
        const QString line =
            QStringLiteral("req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=localhost -addext "
                           "subjectAltName=DNS:localhost,IP:127.0.0.1 -keyout %1 -out %2");
        return QProcess::execute(QStringLiteral("openssl"),
                                 line.arg(keyFile(), certificateFile()).split(u' '))
               == 0;
    }

    QTemporaryDir folder;
    QProcess process;
    QString origin;
    QByteArray out;
    QByteArray err;
};

} // namespace tideloft::tests
