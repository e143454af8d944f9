// The key file rules over the cache: whatever happens to the file between two readings holds at once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/reading.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <functional>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

bool writeKeyFile(const QByteArray &bytes)
{
    QDir(privateKeyPath()).removeRecursively(); // the directory of another case
    return writeFile(privateKeyPath(), bytes);
}

bool putDirectoryInItsPlace()
{
    return QFile::remove(privateKeyPath()) && QDir().mkdir(privateKeyPath());
}

} // namespace

class TestReadingKeyFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void brokenPrivateKeyIsNotRemembered();
    void keyFileThatChangedIsObeyed_data();
    void keyFileThatChangedIsObeyed();
    void replacedKeyOpensItsOwnMessages();
    void equalKeyTextKeepsTheMemory();
    void rereadingSaysWhetherTheKeyIsAsBefore_data();
    void rereadingSaysWhetherTheKeyIsAsBefore();
};

void TestReadingKeyFile::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(keyText()));
}

void TestReadingKeyFile::brokenPrivateKeyIsNotRemembered()
{
    DecryptionCache cache;
    const QJsonObject message = sealed(u"hi"_s);
    QVERIFY(writeKeyFile("QUJD"));
    for (int i = 0; i < 2; ++i) {
        const QString error = errorWith(cache, message);
        QVERIFY2(error.startsWith(u"Could not parse private key: error:"_s), qPrintable(error));
    }
    QVERIFY(writeKeyFile(keyText().toLatin1()));
    QCOMPARE(textWith(cache, message), u"hi"_s);
}

void TestReadingKeyFile::keyFileThatChangedIsObeyed_data()
{
    using Change = std::function<bool()>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("beginning");
    const QString unopened = u"Could not open file: "_s + privateKeyPath();
    QTest::newRow("replaced") << Change([] { return writeKeyFile(anotherPrivateKey().toBase64()); })
                              << u"RSA-OAEP decrypt failed: error:"_s;
    QTest::newRow("not a key") << Change([] { return writeKeyFile("QUJD"); })
                               << u"Could not parse private key: error:"_s;
    QTest::newRow("not Base64") << Change([] { return writeKeyFile("!!!!"); }) << u"Invalid base64 data."_s;
    QTest::newRow("foreign blanks") << Change([] { return writeKeyFile("\xc2\xa0"); })
                                    << u"Private key decode failed."_s;
    QTest::newRow("byte order mark") << Change([] { return writeKeyFile("\xef\xbb\xbf"); })
                                     << u"Private key not found."_s;
    QTest::newRow("blanked") << Change([] { return writeKeyFile(" \n"); }) << u"Private key not found."_s;
    QTest::newRow("emptied") << Change([] { return writeKeyFile(""); }) << u"Private key not found."_s;
    QTest::newRow("unreadable") << Change(putDirectoryInItsPlace) << unopened;
    QTest::newRow("deleted") << Change([] { return QFile::remove(privateKeyPath()); }) << unopened;
    QTest::newRow("its directory gone") << Change(blockDataDir) << u"Private key path is empty."_s;
}

void TestReadingKeyFile::keyFileThatChangedIsObeyed()
{
    QFETCH(const std::function<bool()>, change);
    QFETCH(const QString, beginning);
    DecryptionCache cache;
    const QJsonObject message = sealed(u"hi"_s);
    QCOMPARE(textWith(cache, message), u"hi"_s);
    QVERIFY(change());
    for (int i = 0; i < 2; ++i) {
        const QString error = errorWith(cache, message);
        QVERIFY2(error.startsWith(beginning), qPrintable(error));
        QCOMPARE(error, decryptMessage(message, u"alice"_s, own).error);
        QCOMPARE(cache.size(), 0);
    }
    removeDataDir();
    QVERIFY(writePrivateKeyFile(keyText()));
    QCOMPARE(textWith(cache, message), u"hi"_s);
    QCOMPARE(cache.size(), 1);
}

void TestReadingKeyFile::replacedKeyOpensItsOwnMessages()
{
    DecryptionCache cache;
    QCOMPARE(textWith(cache, sealed(u"old"_s)), u"old"_s);
    const QByteArray other = anotherPrivateKey();
    QVERIFY(writeKeyFile(other.toBase64()));
    const QString wrapped = toBase64Text(rsaOaepEncrypt(publicKeyOf(other), contentKey));
    const QJsonObject message = withRecipientKey(sealedWith(contentKey, "new"), u"encryptedKey"_s, wrapped);
    QCOMPARE(textWith(cache, message), u"new"_s);
    QCOMPARE(cache.size(), 1);
}

void TestReadingKeyFile::equalKeyTextKeepsTheMemory()
{
    DecryptionCache cache;
    QCOMPARE(textWith(cache, sealed(u"one"_s)), u"one"_s);
    QVERIFY(writeKeyFile(" " + keyText().toLatin1() + "\r\n"));
    QCOMPARE(textWith(cache, sealed(u"two"_s)), u"two"_s);
    QCOMPARE(cache.size(), 2);
}

void TestReadingKeyFile::rereadingSaysWhetherTheKeyIsAsBefore_data()
{
    QTest::addColumn<std::function<bool()>>("change");
    QTest::addColumn<bool>("isAsBefore");
    const auto row = [](const char *name, bool isAsBefore, const std::function<bool()> &change) {
        QTest::newRow(name) << change << isAsBefore;
    };
    row("untouched", true, [] { return true; });
    row("written again with a line break", true, [] { return writeKeyFile(keyText().toLatin1() + '\n'); });
    row("another key", false, [] { return writeKeyFile("QUJD"); });
    row("blank", false, [] { return writeKeyFile(" \n"); });
    row("deleted", false, [] { return QFile::remove(privateKeyPath()); });
    row("a directory", false, putDirectoryInItsPlace);
}

void TestReadingKeyFile::rereadingSaysWhetherTheKeyIsAsBefore()
{
    QFETCH(const std::function<bool()>, change);
    DecryptionCache cache;
    QCOMPARE(textWith(cache, sealed(u"hi"_s)), u"hi"_s);
    const quint64 before = cache.generation();
    QVERIFY(change());
    rereadPrivateKey(u"alice"_s, own, cache);
    QCOMPARE(cache.size(), cache.generation() == before ? 1 : 0);
    QTEST(cache.generation() == before, "isAsBefore");
}

TIDELOFT_TEST_MAIN(TestReadingKeyFile)
#include "tst_reading_key_file.moc"
