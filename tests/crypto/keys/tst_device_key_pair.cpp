// The device's key pair in its files: what is written, what a refused file leaves behind, when a pair stays.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestDeviceKeyPair : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void filesHoldOneLineOfBase64_data();
    void filesHoldOneLineOfBase64();
    void generatedHalvesBelongTogether();
    void failedPrivateWriteLeavesNoNewPublicFile();
    void failedPublicWriteIsReported();
    void missingDirectoryIsReported();
    void ensureCreatesBothAndThenLeavesThemAlone();
    void losingThePublicHalfReplacesThePrivateOne();
    void contentOfExistingFilesIsNotChecked();
    void ensureReportsAnUnwritableDirectory();
};

void TestDeviceKeyPair::filesHoldOneLineOfBase64_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("private") << privateKeyPath();
    QTest::newRow("public") << publicKeyPath();
}

void TestDeviceKeyPair::filesHoldOneLineOfBase64()
{
    QFETCH(const QString, path);
    QVERIFY(generateKeyPair());
    const QByteArray content = readFile(path);
    QVERIFY(!content.isEmpty());
    QCOMPARE(QByteArray::fromBase64(content, QByteArray::AbortOnBase64DecodingErrors).toBase64(), content);
}

void TestDeviceKeyPair::generatedHalvesBelongTogether()
{
    QString error = u"before"_s;
    QVERIFY(generateKeyPair(&error));
    QCOMPARE(error, u"before"_s);
    QCOMPARE(publicKeyOf(fromBase64Text(readPrivateKeyFile())), fromBase64Text(readPublicKeyFile()));
}

void TestDeviceKeyPair::failedPrivateWriteLeavesNoNewPublicFile()
{
    QVERIFY(QDir().mkdir(privateKeyPath()));
    QString error = u"before"_s;
    QVERIFY(!generateKeyPair(&error));
    QCOMPARE(error, u"Could not write private key file: "_s + privateKeyPath());
    QVERIFY(!QFile::exists(publicKeyPath()));
}

void TestDeviceKeyPair::failedPublicWriteIsReported()
{
    QVERIFY(QDir().mkdir(publicKeyPath()));
    QString error;
    QVERIFY(!generateKeyPair(&error));
    QCOMPARE(error, u"Could not write public key file: "_s + publicKeyPath());
    QVERIFY(!readPrivateKeyFile().isEmpty()); // half-written: the private half came first
}

void TestDeviceKeyPair::missingDirectoryIsReported()
{
    QVERIFY(blockDataDir());
    QString error = u"replaced, not kept"_s;
    QVERIFY(!generateKeyPair(&error));
    QCOMPARE(error, u"Private key path is empty."_s);
    QVERIFY(!generateKeyPair());
}

void TestDeviceKeyPair::ensureCreatesBothAndThenLeavesThemAlone()
{
    QString error = u"before"_s;
    QVERIFY(ensureKeyPair(&error));
    const QByteArray privateHalf = readFile(privateKeyPath());
    const QByteArray publicHalf = readFile(publicKeyPath());
    QVERIFY(!privateHalf.isEmpty() && !publicHalf.isEmpty());
    QVERIFY(ensureKeyPair(&error));
    QCOMPARE(readFile(privateKeyPath()), privateHalf);
    QCOMPARE(readFile(publicKeyPath()), publicHalf);
    QCOMPARE(error, u"before"_s);
}

void TestDeviceKeyPair::losingThePublicHalfReplacesThePrivateOne()
{
    QVERIFY(writePrivateKeyFile(u"the old key"_s));
    QVERIFY(!publicKeyExists());
    QVERIFY(ensureKeyPair());
    QVERIFY(publicKeyExists());
    QVERIFY(readFile(privateKeyPath()) != "the old key");
    QVERIFY(!readFile(privateKeyPath()).isEmpty());
}

void TestDeviceKeyPair::contentOfExistingFilesIsNotChecked()
{
    QVERIFY(writePrivateKeyFile(u"nonsense"_s));
    QVERIFY(writePublicKeyFile(u"more of it"_s));
    QVERIFY(ensureKeyPair());
    QCOMPARE(readFile(privateKeyPath()), QByteArray("nonsense"));
    QCOMPARE(readFile(publicKeyPath()), QByteArray("more of it"));
}

void TestDeviceKeyPair::ensureReportsAnUnwritableDirectory()
{
    QVERIFY(QDir().mkdir(privateKeyPath()));
    QString error;
    QVERIFY(!ensureKeyPair(&error));
    QCOMPARE(error, u"Could not write private key file: "_s + privateKeyPath());
    QVERIFY(!publicKeyExists());
}

TIDELOFT_TEST_MAIN(TestDeviceKeyPair)
#include "tst_device_key_pair.moc"
