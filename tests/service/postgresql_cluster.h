// A PostgreSQL server of the test's own: in a folder that goes away, on a free port of this machine.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace tideloft::tests
{

class PostgresqlCluster
{
public:
    /// What a new server begins as.
    enum class Beginning { Empty, Bare };

    /// MORE are settings of the server, "name=value". A bare one has a folder and no server in it.
    explicit PostgresqlCluster(QStringList more = {QStringLiteral("fsync=off")},
                               Beginning beginning = Beginning::Empty);
    Q_DISABLE_COPY_MOVE(PostgresqlCluster)
    ~PostgresqlCluster();

    /// One for all tests of this process, which ends with it.
    static PostgresqlCluster &ofThisProcess();

    /// Makes a bare one a standby of the other, which follows it from now on.
    void follow(const PostgresqlCluster &primary);

    void start();

    /// SIGQUIT ends it at once, SIGINT in good order, SIGKILL as a power cut does.
    void stop(int signal);

    /// An address under which nothing is kept yet.
    QString newPlace();

    QString url() const;

    /// The folder of what it keeps.
    QString data() const { return folder.filePath(QStringLiteral("data")); }

    /// Where a program of PostgreSQL lies.
    static QString program(const QString &name);
    quint16 port() const { return usedPort; }

    /// PLACE, with every statement of its connections in the server's log.
    static QString logged(const QString &place);
    /// How many statements are in the log.
    qsizetype statements() const;
    /// What the server has written into its log.
    QByteArray log() const;

    /// Runs a statement as the server's owner. False when it cannot be done.
    bool run(const QString &statement) const;

private:
    void runTool(const QString &name, const QStringList &arguments) const;

    const QStringList settings;
    const QTemporaryDir folder;
    const quint16 usedPort;
    QProcess process;
    int places = 0;
};

} // namespace tideloft::tests
