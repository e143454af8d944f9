// A first sign-in that is killed: what the next one finds is a pair, nothing, or an empty half that says so.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/faults/failing_calls.h"
#include "tests/faults/first_sign_in_process.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QTest>

using namespace tideloft;
using namespace tideloft::tests;

namespace
{

constexpr int callsOfASignIn = 50; // below the data directory, in a whole first start and sign-in

QString killAt(int call)
{
    return QString::number(call) + u' ' + QFileInfo(dataLocation()).path();
}

bool isIdentifier(const QByteArray &text)
{
    return text.size() == 36 && text.count('-') == 4;
}

} // namespace

class TestKilledSignIn : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void atEachCall_data();
    void atEachCall();
    void atRandomMoments();
    void completePairIsNotTouched();

private:
    static void findWhatMayBeLeft();
    static void findTheNextSignInInOrder();
};

// Killed at any moment, a file is missing, empty or complete; and no half stands beside one of another pair.
void TestKilledSignIn::findWhatMayBeLeft()
{
    const QByteArray identifier = identifierFile();
    QVERIFY2(identifier.isEmpty() || isIdentifier(identifier), identifier.constData());
    const QString privateHalf = crypto::readPrivateKeyFile();
    const QString publicHalf = crypto::readPublicKeyFile();
    if (!privateHalf.isEmpty())
        QVERIFY(keyFromDer(crypto::fromBase64Text(privateHalf)));
    if (!publicHalf.isEmpty())
        QVERIFY(keyFilesMatch());
}

void TestKilledSignIn::findTheNextSignInInOrder()
{
    const bool emptyPublicHalf =
        QFile::exists(dataLocation() + u"/chat_public_key.b64"_s) && crypto::readPublicKeyFile().isEmpty();
    FirstSignIn next;
    next.go();
    const QStringList lines = next.lines();
    QCOMPARE(lines.value(0).toUtf8(), identifierFile());
    QVERIFY(isIdentifier(identifierFile()));
    if (emptyPublicHalf)
        QCOMPARE(lines.value(1), u"Public key error: "_s);
    else
        QVERIFY2(keyFilesMatch(), qPrintable(lines.value(1)));
}

void TestKilledSignIn::atEachCall_data()
{
    QTest::addColumn<int>("call");
    for (int call = 1; call <= callsOfASignIn; ++call)
        QTest::addRow("call %d", call) << call;
}

void TestKilledSignIn::atEachCall()
{
    QFETCH(const int, call);
    for (int round = rounds(1, 30); round > 0; --round) {
        removeDataDir();
        FirstSignIn first({}, {QString::fromUtf8(killAtVariable), killAt(call)});
        first.go();
        first.lines();
        QVERIFY(first.wasKilled());
        findWhatMayBeLeft();
        findTheNextSignInInOrder();
    }
}

void TestKilledSignIn::atRandomMoments()
{
    QRandomGenerator random(20261121);
    for (int round = rounds(10, 1000); round > 0; --round) {
        removeDataDir();
        const auto moment = random.bounded(300'000); // µs; many pairs are made by then
        FirstSignIn first({u"after"_s, QString::number(moment)});
        first.go();
        first.lines();
        findWhatMayBeLeft();
        findTheNextSignInInOrder();
        if (QTest::currentTestFailed())
            return;
    }
}

void TestKilledSignIn::completePairIsNotTouched()
{
    FirstSignIn whole;
    whole.go();
    whole.lines();
    const QByteArray privateHalf = readFile(crypto::privateKeyPath());
    const QByteArray publicHalf = readFile(crypto::publicKeyPath());
    const QByteArray identifier = identifierFile();
    for (int round = 1; round <= rounds(10, 200); ++round) {
        FirstSignIn later({}, {QString::fromUtf8(killAtVariable), killAt(1 + round * 3 % 28)});
        later.go();
        later.lines();
        QCOMPARE(readFile(crypto::privateKeyPath()), privateHalf);
        QCOMPARE(readFile(crypto::publicKeyPath()), publicHalf);
        QCOMPARE(identifierFile(), identifier);
    }
    QVERIFY(keyFilesMatch());
}

TIDELOFT_TEST_MAIN(TestKilledSignIn)
#include "tst_killed_sign_in.moc"
