// Writing a whole file: over a regular one or where there is none, and into nothing else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/regular_file.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tideloft::local_files;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestWritingRegularFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newAndEarlierFilesHoldTheBytes();
    void earlierFilesKeepTheirPlace();
    void aPartThatTheDiskTookIsTakenBack();
    void whatALinkLeadsToIsNotWrittenTo();
    void linkToNothingMakesNoFile();
    void fileWithASecondNameIsNotWrittenTo();
    void nothingElseIsWrittenTo_data();
    void nothingElseIsWrittenTo();
    void pipeThatIsReadGetsNothing();

private:
    [[nodiscard]] QString pathOf(const QString &name) const { return directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> directory;
};

void TestWritingRegularFile::init()
{
    directory = std::make_unique<QTemporaryDir>();
}

void TestWritingRegularFile::newAndEarlierFilesHoldTheBytes()
{
    const QString path = pathOf(u"räksmörgås"_s);
    for (const QByteArray &bytes : {QByteArray(100'000, 'm'), QByteArray("a\0b", 3), QByteArray()}) {
        QVERIFY(writeRegularFile(path, bytes));
        QCOMPARE(readFile(path), bytes);
    }
}

// Replaced is what the file holds, and not the file.
void TestWritingRegularFile::earlierFilesKeepTheirPlace()
{
    QVERIFY(writeFile(pathOf(u"file"_s), "earlier"));
    QFile before(pathOf(u"file"_s));
    QVERIFY(before.open(QIODevice::ReadOnly));
    QVERIFY(writeRegularFile(pathOf(u"file"_s), "new"));
    QCOMPARE(before.readAll(), QByteArray("new"));
}

// The limit stands for a disk that has room for ten bytes more: it takes them, and then no other.
void TestWritingRegularFile::aPartThatTheDiskTookIsTakenBack()
{
    const QString path = pathOf(u"file"_s);
    QVERIFY(writeFile(path, "earlier"));
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    const rlimit tenBytes{10, before.rlim_max};
    const bool isLimited = setrlimit(RLIMIT_FSIZE, &tenBytes) == 0;
    const bool isOpened = writeRegularFile(path, QByteArray(36, 'm'));
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, handler);
    QVERIFY(isLimited);
    QVERIFY(isOpened);
    QVERIFY(QFile::exists(path));
    QCOMPARE(readFile(path), QByteArray());
}

void TestWritingRegularFile::whatALinkLeadsToIsNotWrittenTo()
{
    const QByteArray document(100'000, 'd');
    QVERIFY(writeFile(pathOf(u"file"_s), document));
    QVERIFY(QFile::link(pathOf(u"file"_s), pathOf(u"link"_s)));
    QVERIFY(!writeRegularFile(pathOf(u"link"_s), "new"));
    QCOMPARE(readFile(pathOf(u"file"_s)), document);
    QVERIFY(QFileInfo(pathOf(u"link"_s)).isSymLink());
}

void TestWritingRegularFile::linkToNothingMakesNoFile()
{
    QVERIFY(QFile::link(pathOf(u"file"_s), pathOf(u"link"_s)));
    QVERIFY(!writeRegularFile(pathOf(u"link"_s), "new"));
    QVERIFY(!QFile::exists(pathOf(u"file"_s)));
}

void TestWritingRegularFile::fileWithASecondNameIsNotWrittenTo()
{
    const QByteArray document(100'000, 'd');
    QVERIFY(writeFile(pathOf(u"file"_s), document));
    QCOMPARE(link(QFile::encodeName(pathOf(u"file"_s)).constData(),
                  QFile::encodeName(pathOf(u"second"_s)).constData()),
             0);
    QVERIFY(!writeRegularFile(pathOf(u"second"_s), "new"));
    QCOMPARE(readFile(pathOf(u"file"_s)), document);
    QVERIFY(QFile::remove(pathOf(u"file"_s)));
    QVERIFY(writeRegularFile(pathOf(u"second"_s), "new")); // its only name now
    QCOMPARE(readFile(pathOf(u"second"_s)), QByteArray("new"));
}

void TestWritingRegularFile::nothingElseIsWrittenTo_data()
{
    QTest::addColumn<QString>("linkedTo");
    QTest::newRow("directory") << u"."_s;
    QTest::newRow("device that takes everything") << u"/dev/null"_s;
    QTest::newRow("device that is full") << u"/dev/full"_s;
    QTest::newRow("pipe that nobody reads") << u"pipe"_s;
    QTest::newRow("place in no directory") << u"missing/file"_s;
    QTest::newRow("itself") << u"link"_s;
}

// Where it would wait for ever, a hang of this test is its failure.
void TestWritingRegularFile::nothingElseIsWrittenTo()
{
    QFETCH(const QString, linkedTo);
    QCOMPARE(mkfifo(QFile::encodeName(pathOf(u"pipe"_s)).constData(), 0600), 0);
    const QString link = pathOf(u"link"_s);
    QCOMPARE(symlink(QFile::encodeName(linkedTo).constData(), QFile::encodeName(link).constData()), 0);
    QVERIFY(!writeRegularFile(link, "new"));
    QVERIFY(QFileInfo(link).isSymLink());
}

void TestWritingRegularFile::pipeThatIsReadGetsNothing()
{
    const QString path = pathOf(u"pipe"_s);
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const int reader = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(reader >= 0);
    QVERIFY(!writeRegularFile(path, "a secret"));
    char byte = 0;
    QCOMPARE(read(reader, &byte, 1), 0);
    close(reader);
}

TIDELOFT_TEST_MAIN(TestWritingRegularFile)
#include "tst_writing_regular_file.moc"
