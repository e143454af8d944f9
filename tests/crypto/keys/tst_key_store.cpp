// The two key files: where they are, what is in them, and every refusal.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/key_halves.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestKeyStore : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void dataDirIsMadeWhenMissing();
    void emptyLocationIsReported();
    void dataDirThatCannotBeMadeIsReported();
    void pathsAndExistenceFollowTheDirectory();
    void withoutADirectoryThereAreNoPaths();
    void writtenTextReadsBack_data() { addHalves(); }
    void writtenTextReadsBack();
    void shorterTextReplacesTheWholeFile_data() { addHalves(); }
    void shorterTextReplacesTheWholeFile();
    void blankTextIsRefusedAndTouchesNothing_data() { addHalves(); }
    void blankTextIsRefusedAndTouchesNothing();
    void missingFileIsReportedWithItsPath_data() { addHalves(); }
    void missingFileIsReportedWithItsPath();
    void outerWhiteSpaceIsRemovedOnReading_data() { addHalves(); }
    void outerWhiteSpaceIsRemovedOnReading();
    void blankFileReadsAsEmptyWithoutAMessage_data() { addHalves(); }
    void blankFileReadsAsEmptyWithoutAMessage();
    void blankTextIsRefusedBeforeAFolderIsMade_data() { addHalves(); }
    void blankTextIsRefusedBeforeAFolderIsMade();
    void emptyPathIsReportedUnlessExplained_data() { addHalves(); }
    void emptyPathIsReportedUnlessExplained();
    void percentSignsInAPathStayAsTheyAre();
};

void TestKeyStore::dataDirIsMadeWhenMissing()
{
    QVERIFY(!QDir(dataLocation()).exists());
    QString error = u"before"_s;
    QCOMPARE(appDataDir(&error), dataLocation());
    QVERIFY(QDir(dataLocation()).exists());
    QCOMPARE(appDataDir(&error), dataLocation());
    QCOMPARE(error, u"before"_s);
}

void TestKeyStore::emptyLocationIsReported()
{
    QString error;
    QVERIFY(makeDataDir(QString(), &error).isEmpty());
    QCOMPARE(error, u"AppData path is empty."_s);
}

void TestKeyStore::dataDirThatCannotBeMadeIsReported()
{
    QVERIFY(blockDataDir());
    QString error;
    QVERIFY(appDataDir(&error).isEmpty());
    QCOMPARE(error, u"Could not create app data directory: "_s + dataLocation());
}

void TestKeyStore::pathsAndExistenceFollowTheDirectory()
{
    QCOMPARE(privateKeyPath(), dataLocation() + u"/chat_private_key.b64"_s);
    QCOMPARE(publicKeyPath(), dataLocation() + u"/chat_public_key.b64"_s);
    QVERIFY(!privateKeyExists());
    QVERIFY(!publicKeyExists());
    QVERIFY(writePrivateKeyFile(u"AAAA"_s));
    QVERIFY(privateKeyExists());
    QVERIFY(!publicKeyExists());
    QVERIFY(writePublicKeyFile(u"AAAA"_s));
    QVERIFY(publicKeyExists());
}

void TestKeyStore::withoutADirectoryThereAreNoPaths()
{
    QVERIFY(blockDataDir());
    QVERIFY(privateKeyPath().isEmpty());
    QVERIFY(publicKeyPath().isEmpty());
    QVERIFY(!privateKeyExists());
    QVERIFY(!publicKeyExists());
}

void TestKeyStore::writtenTextReadsBack()
{
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QFETCH(const Reader, read);
    QString error = u"before"_s;
    QVERIFY(write(u"  QUJD=\r\n"_s, &error));
    QCOMPARE(readFile(path), QByteArray("QUJD="));
    QCOMPARE(read(&error), u"QUJD="_s);
    QCOMPARE(error, u"before"_s);
}

void TestKeyStore::shorterTextReplacesTheWholeFile()
{
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QVERIFY(write(QString(1000, u'A'), nullptr));
    QVERIFY(write(u"QUJD"_s, nullptr));
    QCOMPARE(readFile(path), QByteArray("QUJD"));
}

void TestKeyStore::blankTextIsRefusedAndTouchesNothing()
{
    QFETCH(const QString, half);
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QVERIFY(write(u"QUJD"_s, nullptr));
    for (const QString &blank : {u"   "_s, u""_s, u"\r\n\t"_s}) {
        QString error = u"before"_s;
        QVERIFY(!write(blank, &error));
        QCOMPARE(error, capitalised(half) + u" key is empty."_s);
    }
    QCOMPARE(readFile(path), QByteArray("QUJD"));
}

void TestKeyStore::missingFileIsReportedWithItsPath()
{
    QFETCH(const QString, path);
    QFETCH(const Reader, read);
    QString error = u"replaced"_s;
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
    QVERIFY(read(nullptr).isEmpty());
}

void TestKeyStore::outerWhiteSpaceIsRemovedOnReading()
{
    QFETCH(const QString, path);
    QFETCH(const Reader, read);
    QVERIFY(!appDataDir().isEmpty());
    QVERIFY(writeFile(path, "QUJD\r\n"));
    QCOMPARE(read(nullptr), u"QUJD"_s);
    QVERIFY(writeFile(path, " \t\r\n\v\fQU JD\f\v\n\r\t "));
    QCOMPARE(read(nullptr), u"QU JD"_s);
    QCOMPARE(readTrimmedFile(path), QByteArray("QU JD"));
}

void TestKeyStore::blankFileReadsAsEmptyWithoutAMessage()
{
    QFETCH(const QString, path);
    QFETCH(const Reader, read);
    QVERIFY(!appDataDir().isEmpty());
    QVERIFY(writeFile(path, " \n"));
    QString error;
    QVERIFY(read(&error).isEmpty());
    QVERIFY(error.isNull());
}

void TestKeyStore::blankTextIsRefusedBeforeAFolderIsMade()
{
    QFETCH(const QString, half);
    QFETCH(const Writer, write);
    QVERIFY(!QDir(dataLocation()).exists());
    QString error;
    QVERIFY(!write(u"   "_s, &error));
    QCOMPARE(error, capitalised(half) + u" key is empty."_s);
    QVERIFY(!QDir(dataLocation()).exists());
}

void TestKeyStore::emptyPathIsReportedUnlessExplained()
{
    QFETCH(const QString, half);
    QFETCH(const Writer, write);
    QFETCH(const Reader, read);
    QVERIFY(blockDataDir());
    const QString message = capitalised(half) + u" key path is empty."_s;
    QString error;
    QVERIFY(!write(u"QUJD"_s, &error));
    QCOMPARE(error, message);
    error.clear();
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, message);
    error = u"something more specific"_s;
    QVERIFY(!write(u"QUJD"_s, &error));
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, u"something more specific"_s);
    QVERIFY(!write(u"QUJD"_s, nullptr));
    QVERIFY(read(nullptr).isEmpty());
}

void TestKeyStore::percentSignsInAPathStayAsTheyAre()
{
    QString error;
    QVERIFY(readTrimmedFile(u"/nowhere/%1/%2"_s, &error).isEmpty());
    QCOMPARE(error, u"Could not open file: /nowhere/%1/%2"_s);
}

TIDELOFT_TEST_MAIN(TestKeyStore)
#include "tst_key_store.moc"
