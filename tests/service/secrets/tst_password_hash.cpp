// Password hashes: what they hold, what they match.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/secrets/password_hash.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestPasswordHash : public QObject
{
    Q_OBJECT

private slots:
    void defaultCostIsTheOneThatIsPromised();
    void knownAnswer();
    void matchesOnlyTheSamePassword();
    void twoHashesOfOnePasswordDiffer();
    void hashIsVerifiedWithItsOwnParameters();
    void unmatchableHashMatchesNothing();
    void damagedHashMatchesNothing_data();
    void damagedHashMatchesNothing();
    void impossibleCostIsAnError();

private:
    const ScryptCost cheap{16, 8, 1};
};

void TestPasswordHash::defaultCostIsTheOneThatIsPromised()
{
    QVERIFY(hashPassword(u"secret"_s, {}).startsWith("scrypt$32768$8$3$"));
}

void TestPasswordHash::knownAnswer()
{
    // RFC 7914, section 12: scrypt("password", "NaCl", 1024, 8, 16), the first 32 bytes.
    const QByteArray key =
        QByteArray::fromHex("fdbabe1c9d3472007856e7190d01e9fe7c6ad7cbc8237830e77376634b373162");
    const QByteArray salt("NaCl");
    QVERIFY(passwordMatches(u"password"_s, "scrypt$1024$8$16$" + salt.toBase64() + '$' + key.toBase64()));
    QVERIFY(!passwordMatches(u"Password"_s, "scrypt$1024$8$16$" + salt.toBase64() + '$' + key.toBase64()));
}

void TestPasswordHash::matchesOnlyTheSamePassword()
{
    const QByteArray hash = hashPassword(u"pässwörd 😀"_s, cheap);
    QVERIFY(passwordMatches(u"pässwörd 😀"_s, hash));
    QVERIFY(!passwordMatches(u"pässwörd 😀 "_s, hash));
    QVERIFY(!passwordMatches(QString(), hash));
}

void TestPasswordHash::twoHashesOfOnePasswordDiffer()
{
    QVERIFY(hashPassword(u"secret"_s, cheap) != hashPassword(u"secret"_s, cheap));
}

void TestPasswordHash::hashIsVerifiedWithItsOwnParameters()
{
    const QByteArray hash = hashPassword(u"secret"_s, {32, 4, 2});
    QVERIFY(hash.startsWith("scrypt$32$4$2$"));
    QVERIFY(passwordMatches(u"secret"_s, hash));
}

void TestPasswordHash::unmatchableHashMatchesNothing()
{
    const QByteArray hash = unmatchableHash(cheap);
    QVERIFY(hash.startsWith("scrypt$16$8$1$"));
    QVERIFY(!passwordMatches(QString(), hash));
    QVERIFY(hash != unmatchableHash(cheap));
}

void TestPasswordHash::damagedHashMatchesNothing_data()
{
    QTest::addColumn<QByteArray>("hash");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("other scheme") << QByteArray("plain$16$8$1$AAAA$AAAA");
    QTest::newRow("key cut off") << QByteArray("scrypt$16$8$1$AAAA$");
    QTest::newRow("field missing") << QByteArray("scrypt$16$8$1$AAAA");
}

void TestPasswordHash::damagedHashMatchesNothing()
{
    QFETCH(QByteArray, hash);
    QVERIFY(!passwordMatches(QString(), hash));
    QVERIFY(!passwordMatches(u"secret"_s, hash));
}

void TestPasswordHash::impossibleCostIsAnError()
{
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, hashPassword(u"secret"_s, {15, 8, 1}));
}

TIDELOFT_TEST_MAIN(TestPasswordHash)
#include "tst_password_hash.moc"
