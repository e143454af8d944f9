// The device identifier when the disk or the system fails: there always is one, and never a part of one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/device_identity.h"
#include "tests/faults/fault_rows.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QUuid>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::net::loadOrCreateDeviceId;

namespace
{

bool isFresh(const QString &identifier)
{
    return identifier.size() == 36 && QUuid(identifier).version() == QUuid::Random;
}

} // namespace

class TestIdentityFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void libraryMakesCallsFail();
    void firstStart_data() { addFaults(); }
    void firstStart();
    void laterStart_data() { addFaults(); }
    void laterStart();
    void nobodyIsWaitedForLongerThanTwoSeconds();

private:
    /// Starts with the first, then with the second call of the row failing, and so on until none is left to
    /// fail. Each time CHECK gets the call that failed, and the identifier.
    template <typename Prepare, typename Check> void failInTurn(const Prepare &prepare, const Check &check);

    std::unique_ptr<QTemporaryDir> home;
    QString directory; ///< not there at first, nor is its parent
    QString path;
};

void TestIdentityFaults::init()
{
    home = std::make_unique<QTemporaryDir>();
    directory = home->filePath(u"a/b"_s);
    path = directory + u"/device_id.txt"_s;
}

void TestIdentityFaults::libraryMakesCallsFail()
{
    const Faults faults(home->path(), Call::Open, 2, false, EIO);
    QVERIFY(writeFile(home->filePath(u"first"_s), "1"));
    QVERIFY(!writeFile(home->filePath(u"second"_s), "2"));
    QCOMPARE(Faults::failed(), u"open to write second"_s);
    QVERIFY(writeFile(home->filePath(u"third"_s), "3"));
}

template <typename Prepare, typename Check>
void TestIdentityFaults::failInTurn(const Prepare &prepare, const Check &check)
{
    QFETCH(const Call, call);
    QFETCH(const int, error);
    QFETCH(const bool, onwards);
    int fired = 0;
    for (bool failed = true; failed; ++fired) {
        init();
        prepare();
        QString identifier;
        QString failedCall;
        {
            const Faults faults(home->path(), call, fired + 1, onwards, error);
            identifier = loadOrCreateDeviceId(directory);
            failedCall = Faults::failed();
        }
        failed = !failedCall.isEmpty();
        check(failedCall, identifier);
    }
    const bool used = call != Call::Stat; // what is there is found out by opening it
    const QList<Call> optional{Call::Mkdir, Call::Write,  Call::Read,
                               Call::Flock, Call::Fchmod, Call::Ftruncate};
    const bool isOptional = optional.contains(call);
    QCOMPARE(fired > 1 || isOptional, used);
}

// Where it cannot be kept, the fresh identifier is good for this run, and the next start finds nothing of it.
void TestIdentityFaults::firstStart()
{
    QFETCH(const bool, onwards);
    QFETCH(const int, error);
    const auto nothing = [] {};
    failInTurn(nothing, [&](const QString &failed, const QString &identifier) {
        QVERIFY2(isFresh(identifier), qPrintable(identifier));
        const bool unmade = failed.startsWith(u"mkdir"_s) || failed.startsWith(u"open to write"_s)
                            || (onwards && failed.startsWith(u"open"_s));
        const bool unseen =
            failed == u"examine device_id.txt"_s || (onwards && failed.startsWith(u"examine"_s));
        const bool unwritten = failed.startsWith(u"write"_s) && error != shortCount; // the rest follows
        const bool lost = unmade || unseen || unwritten || failed.startsWith(u"empty"_s);
        QCOMPARE(QFile::exists(path), !unmade);
        QCOMPARE(readFile(path), lost ? QByteArray() : identifier.toUtf8());
        const QString next = loadOrCreateDeviceId(directory);
        QCOMPARE(next == identifier, !lost);
        QCOMPARE(readFile(path), next.toUtf8());
    });
}

// An identifier that cannot be read, and not at a second look either, is made anew, and written if that is
// possible.
void TestIdentityFaults::laterStart()
{
    QFETCH(const bool, onwards);
    QFETCH(const int, error);
    const auto old = [&] { QVERIFY(QDir().mkpath(directory) && writeFile(path, "the old one\n")); };
    failInTurn(old, [&](const QString &failed, const QString &identifier) {
        const bool shut = onwards && (failed.startsWith(u"open"_s) || failed.startsWith(u"examine"_s));
        const bool unread = shut || (onwards && failed.startsWith(u"read"_s) && error > 0);
        QCOMPARE(isFresh(identifier), unread);
        if (!unread)
            QCOMPARE(identifier, u"the old one"_s);
        const bool kept = !unread || shut;
        QCOMPARE(readFile(path), kept ? QByteArray("the old one\n") : identifier.toUtf8());
    });
}

// Another copy, or another user, holds the lock and does not let go. Between two tries pass 5 ms or more, so
// that as many tries take no longer.
void TestIdentityFaults::nobodyIsWaitedForLongerThanTwoSeconds()
{
    const Faults faults(home->path(), Call::Flock, 1, true, EWOULDBLOCK);
    QVERIFY(isFresh(loadOrCreateDeviceId(directory)));
    QVERIFY(Faults::calls() > 1);
    QVERIFY2(Faults::calls() <= 2'000 / 5 + 1, qPrintable(QString::number(Faults::calls())));
}

TIDELOFT_TEST_MAIN(TestIdentityFaults)
#include "tst_identity_faults.moc"
