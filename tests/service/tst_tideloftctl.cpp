// Looking after accounts while the service runs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/control_program.h"
#include "tests/service/daemon_client.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestTideloftctl : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void mistakesEndWithTwo_data();
    void mistakesEndWithTwo();
    void whatCannotBeDoneEndsWithOne_data();
    void whatCannotBeDoneEndsWithOne();
    void missingDatabaseIsNotMade();
    void accountIsMadeAndListed();
    void passwordsOfTheWrongLengthAreRefused();
    void disabledIsSignedOutAndBackAgain();
    void newPasswordTakesThePlaceOfTheOld();
    void endedSessionsAreEnded();
    void deletedIsGoneAndOthersKeepTheirs();
    void invitations();
    void terminalShowsNoPassword();
    void terminalAsksTwice();

private:
    Ended run(const QString &line, const QByteArray &input = {}) const
    {
        return control(daemon->databaseFile(), line, input);
    }
    Ended typeIn(const QString &line, const QList<QByteArray> &typed, QByteArray &shown) const;

    QScopedPointer<Daemon> daemon;
    QScopedPointer<DaemonClient> alice;
    QScopedPointer<DaemonClient> bob;
};

void TestTideloftctl::init()
{
    daemon.reset(new Daemon);
    QVERIFY(daemon->startPlain({u"--registration"_s, u"closed"_s, u"--sign-ins-per-minute"_s, u"0"_s}));
    alice.reset(new DaemonClient(*daemon));
    bob.reset(new DaemonClient(*daemon));
}

void TestTideloftctl::mistakesEndWithTwo_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("nothing") << QString() << QByteArray("There is no command");
    QTest::newRow("unknown") << u"user rename alice"_s
                             << QByteArray("There is no command 'user rename alice'");
    QTest::newRow("half") << u"user"_s << QByteArray("There is no command 'user'");
    QTest::newRow("no name") << u"user add"_s << QByteArray("'user add' needs NAME");
    QTest::newRow("password as an argument")
        << u"user add alice secret"_s << QByteArray("Unexpected argument 'secret'");
    QTest::newRow("option") << u"user list --all"_s << QByteArray("all");
}

void TestTideloftctl::mistakesEndWithTwo()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, said);
    const Ended ended = run(line);
    QCOMPARE(ended.code, 2);
    QVERIFY2(ended.errors.contains(said), ended.errors.constData());
    QCOMPARE(ended.output, QByteArray());
}

void TestTideloftctl::whatCannotBeDoneEndsWithOne_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("unknown user") << u"user disable nobody"_s << QByteArray("There is no user nobody");
    QTest::newRow("no name") << u"user add a/b"_s << QByteArray("A user name has 3 to 32");
    QTest::newRow("no invitation") << u"invite revoke nobody"_s << QByteArray("nobody is not invited");
    QTest::newRow("no backup") << u"restore /nowhere"_s << QByteArray("there is no such file");
}

void TestTideloftctl::whatCannotBeDoneEndsWithOne()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, said);
    const Ended ended = run(line, "a good password\n");
    QCOMPARE(ended.code, 1);
    QVERIFY2(ended.errors.startsWith("tideloftctl: ") && ended.errors.contains(said),
             ended.errors.constData());
    QCOMPARE(ended.errors.count('\n'), 1);
}

void TestTideloftctl::missingDatabaseIsNotMade()
{
    const QString missing = daemon->databaseFile() + u".missing"_s;
    for (const QString &line : {u"user list"_s, u"check"_s, u"backup /nowhere"_s}) {
        const Ended ended = control(missing, line);
        QCOMPARE(ended.code, 1);
        QVERIFY(ended.errors.contains(missing.toUtf8()));
    }
    QVERIFY(!QFile::exists(missing));
}

void TestTideloftctl::accountIsMadeAndListed()
{
    QCOMPARE(alice->registerAs(u"alice"_s), 403);
    const Ended made = run(u"user add Alice"_s, "a good password\nwhat follows is not read");
    QCOMPARE(made.code, 0);
    QCOMPARE(made.output, "The account alice is made.\n");
    QCOMPARE(alice->signIn(u"alice"_s).status, 200);
    const QList<QByteArray> lines = run(u"user list"_s).output.split('\n');
    QCOMPARE(lines[0].simplified(), "NAME STATE MADE MESSAGES DEVICES SESSIONS");
    QVERIFY(lines[1].startsWith("alice  active  20"));
    QVERIFY(lines[1].endsWith(" 0        0         1"));
    QCOMPARE(run(u"user add alice"_s, "a good password\n").errors,
             "tideloftctl: There is a user alice already\n");
}

void TestTideloftctl::passwordsOfTheWrongLengthAreRefused()
{
    const QByteArray said = "tideloftctl: A password has 8 to 256 characters\n";
    QCOMPARE(run(u"user add alice"_s, "seven77\n").errors, said);
    QCOMPARE(run(u"user add alice"_s, QByteArray(257, 'x') + '\n').errors, said);
    QCOMPARE(run(u"user add alice"_s, {}).errors, said);
    QVERIFY(run(u"user add alice"_s, "\xff\xff\xff\xff\xff\xff\xff\xff\n").errors.contains("UTF-8"));
    QCOMPARE(run(u"user add alice"_s, QByteArray(256, 'x') + "\r\n").code, 0);
    QCOMPARE(alice->signIn(u"alice"_s, QString(256, u'x')).status, 200);
}

void TestTideloftctl::disabledIsSignedOutAndBackAgain()
{
    QCOMPARE(run(u"user add alice"_s, "a good password\n").code, 0);
    alice->signIn(u"alice"_s);
    QCOMPARE(alice->get("/api/me").status, 200);
    QCOMPARE(run(u"user disable alice"_s).code, 0);
    QCOMPARE(alice->post("/api/profile/update", {{u"bio"_s, u"still here"_s}}).status, 401);
    QTRY_COMPARE(alice->get("/api/me").status, 401);
    const HttpReply refused = alice->signIn(u"alice"_s);
    QCOMPARE(refused.status, 403);
    QCOMPARE(DaemonClient::message(refused),
             u"This account is disabled. Please ask the person who runs the service."_s);
    QVERIFY(run(u"user list"_s).output.contains("alice  disabled"));
    QCOMPARE(run(u"user enable alice"_s).code, 0);
    QCOMPARE(alice->signIn(u"alice"_s).status, 200);
    QCOMPARE(alice->get("/api/me").status, 200);
}

void TestTideloftctl::newPasswordTakesThePlaceOfTheOld()
{
    run(u"user add alice"_s, "a good password\n");
    alice->signIn(u"alice"_s);
    QCOMPARE(run(u"user password alice"_s, "a better password\n").code, 0);
    QTRY_COMPARE(alice->get("/api/me").status, 401);
    QCOMPARE(alice->signIn(u"alice"_s).status, 401);
    QCOMPARE(alice->signIn(u"alice"_s, u"a better password"_s).status, 200);
}

void TestTideloftctl::endedSessionsAreEnded()
{
    for (const char *name : {"alice", "bob"})
        run(u"user add "_s + QLatin1StringView(name), "a good password\n");
    alice->signIn(u"alice"_s);
    bob->signIn(u"bob"_s);
    QCOMPARE(run(u"sessions end alice"_s).output, "alice is signed out of 1 sessions.\n");
    QTRY_COMPARE(alice->get("/api/me").status, 401);
    QCOMPARE(bob->get("/api/me").status, 200);
}

void TestTideloftctl::deletedIsGoneAndOthersKeepTheirs()
{
    for (const char *name : {"alice", "bob"})
        run(u"user add "_s + QLatin1StringView(name), "a good password\n");
    alice->signIn(u"alice"_s);
    bob->signIn(u"bob"_s);
    QCOMPARE(alice->post("/api/chat/send", plainMessage(u"bob"_s, u"keep this"_s)).status, 201);
    const Ended unsure = run(u"user delete alice"_s);
    QCOMPARE(unsure.code, 1);
    QVERIFY(unsure.errors.contains("--yes"));
    QCOMPARE(alice->get("/api/me").status, 200);
    QCOMPARE(run(u"user delete alice --yes"_s).code, 0);
    QTRY_COMPARE(alice->get("/api/me").status, 401);
    QCOMPARE(alice->signIn(u"alice"_s).status, 401);
    QCOMPARE(DaemonClient::array(bob->get("/api/chat/history/alice")).at(0)[u"text"_s].toString(),
             u"keep this"_s);
    QVERIFY(run(u"user add alice"_s, "a good password\n").errors.contains("given to nobody else"));
    QVERIFY(run(u"user enable alice"_s).errors.contains("was deleted"));
}

void TestTideloftctl::invitations()
{
    QCOMPARE(daemon->stop(SIGTERM), 0);
    QVERIFY(daemon->startPlain({u"--registration"_s, u"invite"_s}));
    QCOMPARE(bob->registerAs(u"bob"_s), 403);
    QCOMPARE(run(u"invite create Bob"_s).code, 0);
    QVERIFY(run(u"invite create bob"_s).errors.contains("bob is invited already"));
    QVERIFY(run(u"invite list"_s).output.contains("\nbob   20"));
    QCOMPARE(bob->registerAs(u"bob"_s), 201);
    QCOMPARE(run(u"invite list"_s).output.count('\n'), 1);
    QVERIFY(run(u"invite create bob"_s).errors.contains("There is a user bob already"));
    QCOMPARE(run(u"invite create carol"_s).code, 0);
    QCOMPARE(run(u"invite revoke carol"_s).code, 0);
    QCOMPARE(bob->registerAs(u"carol"_s), 403);
}

// The other end of the terminal is that of the person: what it gives is what the person sees.
Ended TestTideloftctl::typeIn(const QString &line, const QList<QByteArray> &typed, QByteArray &shown) const
{
    const int person = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (person < 0 || grantpt(person) != 0 || unlockpt(person) != 0)
        return {};
    const int terminal = ::open(ptsname(person), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QProcess process;
    process.setChildProcessModifier([terminal] { dup2(terminal, STDIN_FILENO); });
    process.setReadChannel(QProcess::StandardError);
    process.start(QStringLiteral(TIDELOFTCTL), controlArguments(daemon->databaseFile(), line));
    QByteArray asked;
    for (const QByteArray &word : typed) {
        while (!asked.endsWith(": ") && process.waitForReadyRead())
            asked += process.readAllStandardError();
        asked.clear();
        if (::write(person, word.constData(), size_t(word.size())) != word.size())
            break;
    }
    Ended ended = endOf(process);
    ::close(terminal);
    char buffer[1000];
    const ssize_t count = ::read(person, buffer, sizeof buffer);
    shown = QByteArray(buffer, qMax<ssize_t>(0, count));
    ::close(person);
    return ended;
}

void TestTideloftctl::terminalShowsNoPassword()
{
    QByteArray shown;
    const Ended ended = typeIn(u"user add alice"_s, {"a good password\n", "a good password\n"}, shown);
    QCOMPARE(ended.code, 0);
    QVERIFY2(!shown.contains("good"), shown.constData());
    QCOMPARE(alice->signIn(u"alice"_s).status, 200);
}

void TestTideloftctl::terminalAsksTwice()
{
    QByteArray shown;
    const Ended ended = typeIn(u"user add alice"_s, {"a good password\n", "a goof password\n"}, shown);
    QCOMPARE(ended.code, 1);
    QVERIFY(ended.errors.contains("two different passwords"));
    QCOMPARE(typeIn(u"user add alice"_s, {"a good\x03\n"}, shown).code, 1);
    QVERIFY(!run(u"user list"_s).output.contains("alice"));
}

TIDELOFT_TEST_MAIN(TestTideloftctl)
#include "tst_tideloftctl.moc"
