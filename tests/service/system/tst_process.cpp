// What the service is promised of the system about its own process.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/system/process.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <thread>
#include <utility>

using namespace tideloft::service;
using namespace Qt::StringLiterals;

namespace
{

/// A pipe, and whether its ends are still open.
struct Pipe {
    Pipe()
    {
        if (pipe2(ends, O_CLOEXEC) != 0)
            qFatal("No pipe.");
    }
    Q_DISABLE_COPY_MOVE(Pipe)
    ~Pipe()
    {
        closeReader();
        close(ends[1]);
    }
    void closeReader()
    {
        if (std::exchange(hasReader, false))
            close(ends[0]);
    }
    int input() const { return ends[1]; }

    int ends[2]{};
    bool hasReader = true;
};

int ownNiceness()
{
    return getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
}

} // namespace

class TestProcess : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { outliveFailedWrites(); }
    void filesAreForTheirOwner();
    void asManyFilesAsAllowed();
    void failedWritesEndNothing();
    void oneThreadLetsOthersGoFirst();
    void writesWhatIsTakenAtOnce();
    void waitsForNobody();
};

void TestProcess::filesAreForTheirOwner()
{
    const QTemporaryDir home;
    const QString path = home.filePath(u"made"_s);
    const mode_t before = umask(0);
    keepFilesForOwner();
    const int made = open(QFile::encodeName(path).constData(), O_CREAT | O_CLOEXEC | O_WRONLY, 0777);
    umask(before);
    struct stat status {
    };
    QCOMPARE(fstat(made, &status), 0);
    close(made);
    QCOMPARE(static_cast<int>(status.st_mode & 0777), 0700);
}

void TestProcess::asManyFilesAsAllowed()
{
    rlimit limit{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &limit), 0);
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 64);
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &limit), 0);
    allowManyFiles();
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &limit), 0);
    QCOMPARE(limit.rlim_cur, limit.rlim_max);
}

// By the signal of either kind: the process would end, and not one test.
void TestProcess::failedWritesEndNothing()
{
    for (const int signal : {SIGPIPE, SIGXFSZ}) {
        std::raise(signal);
        struct sigaction action {
        };
        QCOMPARE(sigaction(signal, nullptr, &action), 0);
        QVERIFY(action.sa_handler == SIG_IGN);
    }
}

void TestProcess::oneThreadLetsOthersGoFirst()
{
    const int before = ownNiceness();
    int inThread = before;
    std::thread([&] {
        letOthersGoFirst();
        inThread = ownNiceness();
    }).join();
    QCOMPARE(inThread, std::min(before + 10, 19));
    QCOMPARE(ownNiceness(), before);
}

void TestProcess::writesWhatIsTakenAtOnce()
{
    const Pipe pipe;
    QVERIFY(writeWithoutWaiting(pipe.input(), "a line\n", 7));
    char taken[16] = {};
    QCOMPARE(read(pipe.ends[0], taken, sizeof taken), ssize_t{7});
    QCOMPARE(QByteArray(taken), QByteArray("a line\n"));
}

// A hang of this test is its failure.
void TestProcess::waitsForNobody()
{
    Pipe pipe;
    const QByteArray line(4096, 'x');
    int lines = 0;
    while (lines < 1'000 && writeWithoutWaiting(pipe.input(), line.constData(), 4096))
        ++lines;
    QVERIFY(lines > 0 && lines < 1'000);
    pipe.closeReader();
    QVERIFY(!writeWithoutWaiting(pipe.input(), line.constData(), 4096));
}

TIDELOFT_TEST_MAIN(TestProcess)
#include "tst_process.moc"
