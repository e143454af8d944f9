// The key files when the disk or the system fails: the messages, what is left, and what is not touched.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "local_files/regular_file.h"
#include "tests/faults/fault_rows.h"
#include "tests/support/crypto/key_halves.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/data_dir.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>

#include <sys/stat.h>

#include <functional>

using namespace tideloft::crypto;
using namespace tideloft::local_files;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

struct Outcome {
    bool ok = false;
    QString error;

    bool operator==(const Outcome &) const = default;
};

QString capitalisedHalfOf(const QString &failed)
{
    return failed.contains(u"public"_s) ? u"Public"_s : u"Private"_s;
}

QString pathOf(const QString &failed)
{
    return dataLocation() + u'/' + failed.section(u' ', -1);
}

// When all calls of a kind fail, the first one may have been a mere look: the next half to be written
// decides.
QString decisive(const QString &failed, bool onwards)
{
    const bool looked = failed.startsWith(u"open directory"_s) || failed.startsWith(u"open to read"_s)
                        || failed == u"examine TideLoft"_s;
    const QString next = isFilled(privateKeyPath()) ? u"public"_s : u"private"_s;
    return onwards && looked ? u"open to write chat_%1_key.b64"_s.arg(next) : failed;
}

// What a write of a key file, or of both, has to say once this call has failed.
Outcome expectedOfWriting(const QString &failed)
{
    if (failed.startsWith(u"mkdir"_s))
        return {false, u"Private key path is empty."_s};
    if (failed.startsWith(u"open to write"_s) || failed.startsWith(u"examine chat"_s)
        || failed.startsWith(u"empty"_s))
        return {false,
                u"Could not write %1 key file: "_s.arg(capitalisedHalfOf(failed).toLower()) + pathOf(failed)};
    return {true, u"before"_s};
}

bool halvesMatch()
{
    const QByteArray privateDer = fromBase64Text(readPrivateKeyFile());
    return !privateDer.isEmpty() && publicKeyOf(privateDer) == fromBase64Text(readPublicKeyFile());
}

} // namespace

class TestKeyFileFaults : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void newPair_data() { addFaults(rounds(1, 0) == 1); }
    void newPair();
    void oneHalf_data() { addFaults(); }
    void oneHalf();
    void completeOldPairIsNeverAltered_data() { addFaults(); }
    void completeOldPairIsNeverAltered();
    void privateHalfIsRead_data() { addFaults(); }
    void privateHalfIsRead();
    void vanishedDirectoryIsNoReasonForANewPair();
    void nobodyIsWaitedForLongerThanTwoSeconds();
    void interruptedCallsAreMadeAgain_data();
    void interruptedCallsAreMadeAgain();

private:
    using Check = std::function<void(const QString &failed, const Outcome &outcome)>;
    /// Runs OPERATION after PREPARE with the first, then with the second call of the row failing, and so on
    /// until none is left to fail. Returns how many did.
    static int failInTurn(const std::function<void()> &prepare,
                          const std::function<bool(QString *)> &operation, const Check &check);
};

int TestKeyFileFaults::failInTurn(const std::function<void()> &prepare,
                                  const std::function<bool(QString *)> &operation, const Check &check)
{
    const Call call = *static_cast<Call *>(QTest::qData("call", qMetaTypeId<Call>()));
    const int error = *static_cast<int *>(QTest::qData("error", QMetaType::Int));
    const bool onwards = *static_cast<bool *>(QTest::qData("onwards", QMetaType::Bool));
    for (int fired = 0;; ++fired) {
        removeDataDir();
        prepare();
        Outcome outcome{false, u"before"_s};
        QString failed;
        {
            const Faults faults(QFileInfo(dataLocation()).path(), call, fired + 1, onwards, error);
            outcome.ok = operation(&outcome.error);
            failed = Faults::failed();
        }
        check(failed, outcome);
        if (failed.isEmpty() || QTest::currentTestFailed())
            return fired;
    }
}

void TestKeyFileFaults::newPair()
{
    QFETCH(const Call, call);
    QFETCH(const int, error);
    QFETCH(const bool, onwards);
    const Check check = [&](const QString &failed, const Outcome &outcome) {
        const QString reason = decisive(failed, onwards);
        QCOMPARE(outcome, expectedOfWriting(reason));
        const bool lost = failed.startsWith(u"write"_s) && error != shortCount;
        const bool takenToBeThere = onwards && failed.startsWith(u"look"_s) && error != EACCES;
        if (outcome.ok && !lost)
            QCOMPARE(halvesMatch(), !takenToBeThere);
        if (lost)
            QVERIFY(readFile(pathOf(failed)).isEmpty());
        if (!outcome.ok && capitalisedHalfOf(reason) == u"Private"_s)
            QVERIFY(!QFile::exists(publicKeyPath()));
    };
    const int fired = failInTurn([] {}, ensureKeyPair, check);
    QCOMPARE(fired > 0, call != Call::Read);
}

void TestKeyFileFaults::oneHalf()
{
    QFETCH(const Call, call);
    QFETCH(const int, error);
    QFETCH(const bool, onwards);
    const auto write = [](QString *message) {
        message->clear();
        return writePrivateKeyFile(u"QUJDREVG"_s, message);
    };
    const int fired =
        failInTurn([] {}, write,
                   [&](const QString &failed, const Outcome &outcome) {
                       const Outcome expected = expectedOfWriting(decisive(failed, onwards));
                       QCOMPARE(outcome.ok, expected.ok);
                       QCOMPARE(outcome.error, expected.ok ? QString() : expected.error);
                       const bool lost =
                           !outcome.ok || (failed.startsWith(u"write"_s) && error != shortCount);
                       QCOMPARE(readFile(dataLocation() + u"/chat_private_key.b64"_s),
                                lost ? QByteArray() : QByteArray("QUJDREVG"));
                   });
    QCOMPARE(fired > 0, call != Call::Read && call != Call::Flock && call != Call::Stat);
}

// Signing in with a pair that is there, and reading a message: nothing of that is a reason to write.
void TestKeyFileFaults::completeOldPairIsNeverAltered()
{
    QFETCH(const Call, call);
    QFETCH(const int, error);
    const auto place = [] {
        QVERIFY(writePrivateKeyFile(u"old private"_s) && writePublicKeyFile(u"old public"_s));
        for (const QString &wide : {dataLocation(), privateKeyPath(), publicKeyPath()})
            QCOMPARE(chmod(QFile::encodeName(wide).constData(), 0755), 0);
    };
    const auto use = [](QString *message) {
        const bool ensured = ensureKeyPair(message);
        readPublicKeyFile();
        readPrivateKeyFile();
        return ensured;
    };
    const int fired = failInTurn(place, use, [&](const QString &failed, const Outcome &outcome) {
        const bool hidden = failed.startsWith(u"look"_s) && error == EACCES;
        if (!hidden) { // a place that may not be looked at may not be written to either, but here it may
            QCOMPARE(outcome, (Outcome{true, u"before"_s}));
            QCOMPARE(readFile(privateKeyPath()), QByteArray("old private"));
            QCOMPARE(readFile(publicKeyPath()), QByteArray("old public"));
        }
    });
    QCOMPARE(fired > 0,
             call != Call::Write && call != Call::Mkdir && call != Call::Ftruncate
                 && call != Call::Flock); // nobody is waited for
}

// The key file is tried twice: once as it is, and once more after its directory was made sure of.
void TestKeyFileFaults::privateHalfIsRead()
{
    QFETCH(const Call, call);
    QFETCH(const int, error);
    QFETCH(const bool, onwards);
    const auto place = [] { QVERIFY(writePrivateKeyFile(u"QUJDREVG"_s)); };
    QString text;
    const auto read = [&](QString *message) {
        text = readPrivateKeyFile(message);
        return !text.isEmpty();
    };
    const int fired = failInTurn(place, read, [&](const QString &failed, const Outcome &outcome) {
        const bool opened = failed.startsWith(u"close"_s) || failed.isEmpty();
        const bool unread = !opened && onwards && error > 0;
        QCOMPARE(text, unread ? QString() : u"QUJDREVG"_s);
        QCOMPARE(outcome.error, unread ? u"Could not open file: "_s + privateKeyPath() : u"before"_s);
    });
    QCOMPARE(fired > 0,
             call == Call::Open || call == Call::Read || call == Call::Close || call == Call::Fstat);
}

// Were it away for the first look only, the pair would pass for missing, and be written over.
void TestKeyFileFaults::vanishedDirectoryIsNoReasonForANewPair()
{
    const Faults faults(QFileInfo(dataLocation()).path(), Call::Mkdir, 1, false, EIO);
    QString error;
    QVERIFY(!ensureKeyPair(&error));
    QCOMPARE(error, u"Private key path is empty."_s);
    QVERIFY(!QFile::exists(dataLocation() + u"/chat_private_key.b64"_s));
}

// Another copy, or another user, holds the lock and does not let go. Between two tries pass 5 ms or more, so
// that as many tries take no longer.
void TestKeyFileFaults::nobodyIsWaitedForLongerThanTwoSeconds()
{
    const Faults faults(QFileInfo(dataLocation()).path(), Call::Flock, 1, true, EWOULDBLOCK);
    QVERIFY(ensureKeyPair());
    QVERIFY(Faults::calls() > 1);
    QVERIFY2(Faults::calls() <= 2'000 / 5 + 1, qPrintable(QString::number(Faults::calls())));
    QVERIFY(halvesMatch());
}

void TestKeyFileFaults::interruptedCallsAreMadeAgain_data()
{
    QTest::addColumn<Call>("call");
    QTest::newRow("read") << Call::Read;
    QTest::newRow("write") << Call::Write;
    QTest::newRow("ftruncate") << Call::Ftruncate;
}

void TestKeyFileFaults::interruptedCallsAreMadeAgain()
{
    QFETCH(const Call, call);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"key"_s);
    const Faults faults(folder.path(), call, 1, false, EINTR);
    QVERIFY(writeRegularFile(path, "QUJDREVG"));
    QCOMPARE(readRegularFile(path).value_or(QByteArray()), QByteArray("QUJDREVG"));
    QVERIFY(!Faults::failed().isEmpty());
}

TIDELOFT_TEST_MAIN(TestKeyFileFaults)
#include "tst_key_file_faults.moc"
