// What else than a key file can stand in a key file's place, and that nobody waits for it or writes into it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/key_halves.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestKeyFilePlaces : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void directoryInTheFilesPlaceIsReported_data() { addHalves(); }
    void directoryInTheFilesPlaceIsReported();
    void pipeIsNotOpened();
    void pipeInTheFilesPlaceIsReported_data() { addHalves(); }
    void pipeInTheFilesPlaceIsReported();
    void hugeFileIsReported_data() { addHalves(); }
    void hugeFileIsReported();
    void danglingLinkIsReported_data() { addHalves(); }
    void danglingLinkIsReported();
    void whatTheFilesNameLeadsToIsNotOverwritten_data();
    void whatTheFilesNameLeadsToIsNotOverwritten();
    void newPairOverwritesNothingElse();
};

void TestKeyFilePlaces::directoryInTheFilesPlaceIsReported()
{
    QFETCH(const QString, half);
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QFETCH(const Reader, read);
    QVERIFY(QDir().mkpath(path));
    QString error;
    QVERIFY(!write(u"QUJD"_s, &error));
    QCOMPARE(error, u"Could not write %1 key file: "_s.arg(half) + path);
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
}

// Reading it would wait for ever: a hang of this test is its failure.
void TestKeyFilePlaces::pipeIsNotOpened()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"chat_private_key.b64"_s);
    QCOMPARE(mkfifo(path.toUtf8().constData(), 0600), 0);
    QString error;
    QVERIFY(readTrimmedFile(path, &error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
}

// Writing to it would wait for ever, too.
void TestKeyFilePlaces::pipeInTheFilesPlaceIsReported()
{
    QFETCH(const QString, half);
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QFETCH(const Reader, read);
    QVERIFY(!appDataDir().isEmpty());
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QString error;
    QVERIFY(!write(u"QUJD"_s, &error));
    QCOMPARE(error, u"Could not write %1 key file: "_s.arg(half) + path);
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
}

void TestKeyFilePlaces::hugeFileIsReported()
{
    QFETCH(const QString, path);
    QFETCH(const Reader, read);
    QVERIFY(!appDataDir().isEmpty());
    QVERIFY(writeFile(path, QByteArray(64 * 1024, 'A')));
    QCOMPARE(read(nullptr).size(), 64 * 1024);
    QVERIFY(writeFile(path, QByteArray(64 * 1024 + 1, 'A')));
    QString error;
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
}

void TestKeyFilePlaces::danglingLinkIsReported()
{
    QFETCH(const QString, half);
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QFETCH(const Reader, read);
    QVERIFY(!appDataDir().isEmpty());
    QVERIFY(QFile::link(u"/nowhere/at/all"_s, path));
    QVERIFY(!privateKeyExists() && !publicKeyExists());
    QString error;
    QVERIFY(!write(u"QUJD"_s, &error));
    QCOMPARE(error, u"Could not write %1 key file: "_s.arg(half) + path);
    QVERIFY(read(&error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
}

void TestKeyFilePlaces::whatTheFilesNameLeadsToIsNotOverwritten_data()
{
    addHalves();
}

void TestKeyFilePlaces::whatTheFilesNameLeadsToIsNotOverwritten()
{
    QFETCH(const QString, half);
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QFETCH(const Reader, read);
    const QTemporaryDir elsewhere;
    const QByteArray document = QFile::encodeName(elsewhere.filePath(u"document"_s));
    QVERIFY(!appDataDir().isEmpty());
    for (const auto lead : {symlink, link}) {
        QFile::remove(path);
        QVERIFY(writeFile(QFile::decodeName(document), "dear diary"));
        QCOMPARE(chmod(document.constData(), 0644), 0);
        QCOMPARE(lead(document.constData(), QFile::encodeName(path).constData()), 0);
        QString error;
        QVERIFY(!write(u"QUJD"_s, &error));
        QCOMPARE(error, u"Could not write %1 key file: "_s.arg(half) + path);
        QCOMPARE(readFile(QFile::decodeName(document)), QByteArray("dear diary"));
        QCOMPARE(read(nullptr), u"dear diary"_s); // a key may be kept elsewhere
    }
}

// The public half is missing, and so both would be written.
void TestKeyFilePlaces::newPairOverwritesNothingElse()
{
    const QTemporaryDir elsewhere;
    const QString document = elsewhere.filePath(u"document"_s);
    QVERIFY(writeFile(document, "dear diary"));
    QVERIFY(!appDataDir().isEmpty() && QFile::link(document, privateKeyPath()));
    QString error;
    QVERIFY(!ensureKeyPair(&error));
    QCOMPARE(error, u"Could not write private key file: "_s + privateKeyPath());
    QCOMPARE(readFile(document), QByteArray("dear diary"));
    QVERIFY(!publicKeyExists());
}

TIDELOFT_TEST_MAIN(TestKeyFilePlaces)
#include "tst_key_file_places.moc"
