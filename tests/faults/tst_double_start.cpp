// Two copies that start and sign in for the first time at the same moment: one identifier, one pair.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/faults/first_sign_in_process.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::tests;

class TestDoubleStart : public QObject
{
    Q_OBJECT

private slots:
    void endsWithOneIdentifierAndOnePair_data();
    void endsWithOneIdentifierAndOnePair();
};

void TestDoubleStart::endsWithOneIdentifierAndOnePair_data()
{
    QTest::addColumn<QString>("left");
    QTest::newRow("nothing there") << QString();
    QTest::newRow("a lone private half") << u"chat_private_key.b64"_s;
    QTest::newRow("a lone public half") << u"chat_public_key.b64"_s;
    QTest::newRow("a blank identifier") << u"device_id.txt"_s;
}

void TestDoubleStart::endsWithOneIdentifierAndOnePair()
{
    QFETCH(const QString, left);
    for (int round = rounds(4, 250); round > 0; --round) {
        removeDataDir();
        if (!left.isEmpty())
            QVERIFY(QDir().mkpath(dataLocation()) && writeFile(dataLocation() + u'/' + left, " \n"));
        FirstSignIn one;
        FirstSignIn other;
        QVERIFY(one.ready && other.ready);
        one.go();
        other.go();
        const QStringList lines = one.lines();
        QCOMPARE(other.lines(), lines);
        QVERIFY(one.endedWell() && other.endedWell());
        const QStringList kept{QString::fromUtf8(identifierFile()), tideloft::crypto::readPublicKeyFile()};
        QCOMPARE(lines, kept);
        QVERIFY(keyFilesMatch());
        QCOMPARE(
            QDir(dataLocation()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 3);
    }
}

TIDELOFT_TEST_MAIN(TestDoubleStart)
#include "tst_double_start.moc"
