// The built client refuses to leave its memory behind when it crashes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/patience.h"
#include "tests/support/test_main.h"

#include <QFile>
#include <QProcess>

#include <sys/resource.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

// Soft and hard limit of a process for its core file, in bytes.
QByteArrayList coreLimits(qint64 process)
{
    QFile limits(u"/proc/%1/limits"_s.arg(process));
    if (!limits.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : limits.readAll().split('\n')) {
        if (line.startsWith("Max core file size"))
            return line.simplified().split(' ').mid(4, 2);
    }
    return {};
}

} // namespace

class TestCoreDumps : public QObject
{
    Q_OBJECT

private slots:
    void clientAllowsItselfNone();
    void clientRefusesWhateverItIsAllowed();
};

// It waits for an answer to its first question meanwhile. Where the system allows no core files to begin
// with, this shows nothing of the client, but the next test does.
void TestCoreDumps::clientAllowsItselfNone()
{
    rlimit own{};
    QCOMPARE(getrlimit(RLIMIT_CORE, &own), 0);
    own.rlim_cur = own.rlim_max; // what the client begins with
    QCOMPARE(setrlimit(RLIMIT_CORE, &own), 0);
    const QByteArray most = QByteArray::number(qulonglong(std::min<rlim_t>(1, own.rlim_max)));
    QProcess client;
    client.start(QString::fromUtf8(TIDELOFT_PROGRAM), QStringList());
    QVERIFY(client.waitForStarted());
    QTRY_COMPARE_WITH_TIMEOUT(coreLimits(client.processId()), (QByteArrayList{most, most}), patience());
    QCOMPARE(client.state(), QProcess::Running);
    client.kill();
    QVERIFY(client.waitForFinished());
}

void TestCoreDumps::clientRefusesWhateverItIsAllowed()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LD_PRELOAD"_s, QString::fromUtf8(CORE_LIMIT_WATCH)); // blanks in a path would end it
    environment.insert(u"LD_LIBRARY_PATH"_s, QString::fromUtf8(CORE_LIMIT_WATCH_DIRECTORY));
    // Under AddressSanitizer: it takes what is preloaded, and leaves the limit to the client.
    environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0:disable_coredump=0"_s);
    QProcess client;
    client.setProcessEnvironment(environment);
    client.setReadChannel(QProcess::StandardError);
    client.start(QString::fromUtf8(TIDELOFT_PROGRAM), QStringList());
    QVERIFY(client.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(client.canReadLine(), patience());
    QCOMPARE(client.readLine(), QByteArray("core files: 1 1\n")); // before anything else
    client.kill();
    QVERIFY(client.waitForFinished());
}

TIDELOFT_TEST_MAIN(TestCoreDumps)
#include "tst_core_dumps.moc"
