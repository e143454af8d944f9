// Reading a whole file: every byte of a regular one, nothing of anything else. Whether a file is there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/regular_file.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace tideloft::local_files;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestRegularFile : public QObject
{
    Q_OBJECT

private slots:
    void allBytesAreRead_data();
    void allBytesAreRead();
    void longerFileThanItSaysIsReadWhole();
    void linkLeadsToItsFile();
    void nothingElseIsRead_data();
    void nothingElseIsRead();
    void whatIsThereIsSeenWhateverWentWrongBefore();
    void whereNothingCanBeNothingIsSeen_data();
    void whereNothingCanBeNothingIsSeen();
    void onlyAFileWithSomethingInItIsFilled_data();
    void onlyAFileWithSomethingInItIsFilled();

private:
    [[nodiscard]] QString pathOf(const QString &name) const { return directory.filePath(name); }

    const QTemporaryDir directory;
};

void TestRegularFile::allBytesAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray("");
    QTest::newRow("one") << QByteArray("x");
    QTest::newRow("with a zero and outer white space") << QByteArray(" a\0b\n", 5);
    QTest::newRow("as many as there may be") << QByteArray(64 * 1024, 'm');
}

void TestRegularFile::allBytesAreRead()
{
    QFETCH(const QByteArray, bytes);
    const QString path = pathOf(u"räksmörgås"_s);
    QFile::remove(path);
    QVERIFY(writeFile(path, bytes));
    const auto read = readRegularFile(path);
    QVERIFY(read.has_value());
    QCOMPARE(*read, bytes);
}

// The kernel's own files say that they are empty, as one does that was not yet written when it was looked at.
void TestRegularFile::longerFileThanItSaysIsReadWhole()
{
    const QString path = u"/proc/self/limits"_s;
    QCOMPARE(QFileInfo(path).size(), 0);
    const QByteArray expected = readFile(path);
    QVERIFY(expected.size() > 100);
    QCOMPARE(readRegularFile(path).value_or(QByteArray()), expected);
}

void TestRegularFile::linkLeadsToItsFile()
{
    QVERIFY(writeFile(pathOf(u"file"_s), "linked"));
    QVERIFY(QFile::link(pathOf(u"file"_s), pathOf(u"link"_s)));
    QCOMPARE(readRegularFile(pathOf(u"link"_s)).value_or(QByteArray()), QByteArray("linked"));
}

void TestRegularFile::nothingElseIsRead_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing there") << pathOf(u"missing"_s);
    QTest::newRow("no path") << QString();
    QTest::newRow("directory") << directory.path();
    QTest::newRow("device without an end") << u"/dev/zero"_s;
    QTest::newRow("pipe that nobody writes to") << pathOf(u"pipe"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pathOf(u"pipe"_s)).constData(), 0600), 0);
    QTest::newRow("link to a pipe") << pathOf(u"link to pipe"_s);
    QVERIFY(QFile::link(pathOf(u"pipe"_s), pathOf(u"link to pipe"_s)));
    QTest::newRow("link to nothing") << pathOf(u"dangling"_s);
    QVERIFY(QFile::link(pathOf(u"missing"_s), pathOf(u"dangling"_s)));
    QTest::newRow("link to itself") << pathOf(u"circle"_s);
    QVERIFY(QFile::link(pathOf(u"circle"_s), pathOf(u"circle"_s)));
    QTest::newRow("one byte more than there may be") << pathOf(u"large"_s);
    QVERIFY(writeFile(pathOf(u"large"_s), QByteArray(64 * 1024 + 1, 'm')));
    QTest::newRow("a terabyte without content") << pathOf(u"huge"_s);
    QVERIFY(writeFile(pathOf(u"huge"_s), QByteArray()));
    QCOMPARE(truncate(QFile::encodeName(pathOf(u"huge"_s)).constData(), off_t{1} << 40), 0);
    QTest::newRow("more than it says, and more than there may be") << u"/proc/kallsyms"_s;
}

void TestRegularFile::nothingElseIsRead()
{
    QFETCH(const QString, path);
    QVERIFY(!readRegularFile(path).has_value());
}

// The system says what went wrong in a place that it does not clear.
void TestRegularFile::whatIsThereIsSeenWhateverWentWrongBefore()
{
    QVERIFY(writeFile(pathOf(u"there"_s), "x"));
    errno = ENOENT;
    QVERIFY(somethingIsAt(pathOf(u"there"_s)));
    errno = EIO;
    QVERIFY(!somethingIsAt(pathOf(u"not there"_s)));
}

void TestRegularFile::whereNothingCanBeNothingIsSeen_data()
{
    QTest::addColumn<QString>("path");
    QVERIFY(writeFile(pathOf(u"a file"_s), "x"));
    QFile::remove(pathOf(u"loop"_s));
    QVERIFY(QFile::link(pathOf(u"loop"_s), pathOf(u"loop"_s)));
    QTest::newRow("in no directory") << pathOf(u"no directory/file"_s);
    QTest::newRow("below a file") << pathOf(u"a file/file"_s);
    QTest::newRow("at a link to itself") << pathOf(u"loop"_s);
    QTest::newRow("under a longer name than files have") << pathOf(QString(300, u'x'));
}

void TestRegularFile::whereNothingCanBeNothingIsSeen()
{
    QFETCH(const QString, path);
    QVERIFY(!somethingIsAt(path));
}

void TestRegularFile::onlyAFileWithSomethingInItIsFilled_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("filled");
    QTest::newRow("nothing in it") << QByteArray("") << false;
    QTest::newRow("one byte") << QByteArray("x") << true;
    QTest::newRow("many bytes") << QByteArray(1000, 'x') << true;
    QTest::newRow("no file") << QByteArray() << false;
}

void TestRegularFile::onlyAFileWithSomethingInItIsFilled()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, filled);
    const QString path = pathOf(u"perhaps filled"_s);
    QFile::remove(path);
    if (!bytes.isNull())
        QVERIFY(writeFile(path, bytes));
    QCOMPARE(isFilled(path), filled);
}

TIDELOFT_TEST_MAIN(TestRegularFile)
#include "tst_regular_file.moc"
