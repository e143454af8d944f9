// The device identifier's file, in every state in which a start of the program may find it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "net/device_identity.h"
#include "tests/support/test_main.h"

#include <QRegularExpression>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using tideloft::net::loadOrCreateDeviceId;

namespace
{

bool isFreshIdentifier(const QString &text)
{
    static const QRegularExpression uuid(
        u"^[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$"_s);
    return uuid.match(text).hasMatch();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

int modeOf(const QString &place)
{
    struct stat status {
    };
    return stat(QFile::encodeName(place).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 07777)
                                                                    : -1;
}

// How often this process has the place open.
int timesOpen(const QString &place)
{
    int times = 0;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closedMeanwhile;
        times += std::filesystem::read_symlink(entry.path(), closedMeanwhile) == place.toStdString() ? 1 : 0;
    }
    return times;
}

} // namespace

class TestDeviceIdentity : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aMissingFileIsCreated();
    void theDirectoryIsMadeWithItsParents();
    void theFileIsForItsOwnerOnly();
    void theDirectoryIsForItsOwnerOnly();
    void widerPlacesAreMended();
    void whatItsNameLeadsToIsNotOverwritten();
    void aWrittenIdentifierIsKept_data();
    void aWrittenIdentifierIsKept();
    void blanksAreOverwritten_data();
    void blanksAreOverwritten();
    void whatIsNoFileIsLeftAlone_data();
    void whatIsNoFileIsLeftAlone();
    void anImpossibleDirectoryGivesAnIdentifierForThisRun();
    void theClientReadsItFromItsDataDirectory();
    void aPipeThatIsReadGetsNothing();
    void theSystemMayNumberTheFileZero();
    void aCopyThatStartsAtTheSameTimeIsWaitedFor();

private:
    std::unique_ptr<QTemporaryDir> directory;
    QString path;
};

void TestDeviceIdentity::init()
{
    directory = std::make_unique<QTemporaryDir>();
    path = directory->filePath(u"device_id.txt"_s);
}

void TestDeviceIdentity::aMissingFileIsCreated()
{
    const QString identifier = loadOrCreateDeviceId(directory->path());
    QVERIFY2(isFreshIdentifier(identifier), qPrintable(identifier));
    QCOMPARE(contentOf(path), identifier.toUtf8()); // no line end
    QCOMPARE(loadOrCreateDeviceId(directory->path()), identifier);
    QVERIFY(QFile::remove(path));
    QVERIFY(loadOrCreateDeviceId(directory->path()) != identifier);
}

void TestDeviceIdentity::theDirectoryIsMadeWithItsParents()
{
    const QString deep = directory->filePath(u"a/b/c"_s);
    const QString identifier = loadOrCreateDeviceId(deep);
    QCOMPARE(contentOf(deep + u"/device_id.txt"_s), identifier.toUtf8());
}

void TestDeviceIdentity::theFileIsForItsOwnerOnly()
{
    const mode_t before = umask(0);
    loadOrCreateDeviceId(directory->path());
    umask(before);
    QCOMPARE(modeOf(path), 0600);
}

void TestDeviceIdentity::theDirectoryIsForItsOwnerOnly()
{
    const QString fresh = directory->filePath(u"a/b"_s);
    const mode_t before = umask(0);
    loadOrCreateDeviceId(fresh);
    umask(before);
    QCOMPARE(modeOf(fresh), 0700);
}

// What a version before this one made, or somebody opened by hand.
void TestDeviceIdentity::widerPlacesAreMended()
{
    write(path, "abc");
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0777), 0);
    QCOMPARE(chmod(QFile::encodeName(directory->path()).constData(), 0755), 0);
    QCOMPARE(loadOrCreateDeviceId(directory->path()), u"abc"_s);
    QCOMPARE(modeOf(path), 0600);
    QCOMPARE(modeOf(directory->path()), 0700);
}

// Blank, or larger than an identifier may be: of either the program would make a fresh one.
void TestDeviceIdentity::whatItsNameLeadsToIsNotOverwritten()
{
    const QString document = directory->filePath(u"document"_s);
    const QByteArray name = QFile::encodeName(document);
    for (const QByteArray &content : {QByteArray(100'000, 'd'), QByteArray("  ")}) {
        for (const auto lead : {symlink, link}) {
            QFile::remove(path);
            write(document, content);
            QCOMPARE(chmod(name.constData(), 0644), 0);
            QCOMPARE(lead(name.constData(), QFile::encodeName(path).constData()), 0);
            QVERIFY(isFreshIdentifier(loadOrCreateDeviceId(directory->path())));
            QCOMPARE(contentOf(document), content);
            QCOMPARE(modeOf(document), 0644);
        }
    }
    write(document, "abc");
    QCOMPARE(loadOrCreateDeviceId(directory->path()), u"abc"_s); // read it may be
}

void TestDeviceIdentity::aWrittenIdentifierIsKept_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    QTest::newRow("blanks around and a line end") << QByteArray("  abc\n") << u"abc"_s;
    QTest::newRow("carriage return and tab") << QByteArray("\tabc\r\n") << u"abc"_s;
    QTest::newRow("no identifier of ours") << QByteArray("My Computer") << u"My Computer"_s;
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa5\xc3\xa4\xc3\xb6") << u"åäö"_s;
    QTest::newRow("upper case") << QByteArray("3F2B8C1E") << u"3F2B8C1E"_s;
    QTest::newRow("control characters")
        << QByteArray("a\r\nb\0c\x1b[0m\x7f", 11) << QString::fromLatin1("a\r\nb\0c\x1b[0m\x7f", 11);
    QTest::newRow("as long as there may be") << QByteArray(64 * 1024, 'a') << QString(64 * 1024, u'a');
}

void TestDeviceIdentity::aWrittenIdentifierIsKept()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, expected);
    write(path, content);
    QCOMPARE(loadOrCreateDeviceId(directory->path()), expected);
    QCOMPARE(contentOf(path), content); // not rewritten
}

void TestDeviceIdentity::blanksAreOverwritten_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("only blanks") << QByteArray("    ");
    // Longer than an identifier: nothing of it may be left behind.
    QTest::newRow("many line ends") << QByteArray(100, '\n');
    QTest::newRow("too large to be one") << QByteArray(64 * 1024 + 1, 'a');
}

void TestDeviceIdentity::blanksAreOverwritten()
{
    QFETCH(const QByteArray, content);
    write(path, content);
    const QString identifier = loadOrCreateDeviceId(directory->path());
    QVERIFY2(isFreshIdentifier(identifier), qPrintable(identifier));
    QCOMPARE(contentOf(path), identifier.toUtf8());
}

void TestDeviceIdentity::whatIsNoFileIsLeftAlone_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("directory") << u"directory"_s;
    QTest::newRow("pipe, which would block") << u"pipe"_s;
    QTest::newRow("link to a device that never ends") << u"/dev/zero"_s;
    QTest::newRow("link to a device that is full") << u"/dev/full"_s;
    QTest::newRow("link into no directory") << u"/nowhere/at/all"_s;
    QTest::newRow("link to itself") << u"device_id.txt"_s;
}

void TestDeviceIdentity::whatIsNoFileIsLeftAlone()
{
    QFETCH(const QString, kind);
    if (kind == u"directory"_s)
        QVERIFY(QDir().mkpath(path));
    else if (kind == u"pipe"_s)
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    else
        QCOMPARE(symlink(QFile::encodeName(kind).constData(), QFile::encodeName(path).constData()), 0);
    const QString identifier = loadOrCreateDeviceId(directory->path());
    QVERIFY2(isFreshIdentifier(identifier), qPrintable(identifier));
    QVERIFY(QFileInfo::exists(path) || QFileInfo(path).isSymLink());
    QVERIFY(!QFileInfo(path).isFile());
    QVERIFY(loadOrCreateDeviceId(directory->path()) != identifier); // good for one run only
}

void TestDeviceIdentity::anImpossibleDirectoryGivesAnIdentifierForThisRun()
{
    write(path, "a file in the directory's place");
    QVERIFY(isFreshIdentifier(loadOrCreateDeviceId(path)));
    QCOMPARE(contentOf(path), QByteArray("a file in the directory's place"));
}

void TestDeviceIdentity::theClientReadsItFromItsDataDirectory()
{
    const QString home = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QVERIFY(home.endsWith(u"/TideLoft/TideLoft"_s));
    const ApiClient first;
    QVERIFY(isFreshIdentifier(first.deviceId()));
    QCOMPARE(contentOf(home + u"/device_id.txt"_s), first.deviceId().toUtf8());
    const ApiClient second;
    QCOMPARE(second.deviceId(), first.deviceId());
    QCOMPARE(first.deviceName(), u"TideLoft Desktop"_s);
    QVERIFY(!first.isSignedIn());
    QCOMPARE(first.currentUsername(), QString());
}

void TestDeviceIdentity::aPipeThatIsReadGetsNothing()
{
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const int reader = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(isFreshIdentifier(loadOrCreateDeviceId(directory->path())));
    char byte = 0;
    QCOMPARE(read(reader, &byte, 1), 0);
    close(reader);
}

// As it does for a program that was started without a standard input.
void TestDeviceIdentity::theSystemMayNumberTheFileZero()
{
    write(path, "abc");
    const int input = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    close(STDIN_FILENO);
    const QString identifier = loadOrCreateDeviceId(directory->path());
    const bool leftOpen = fcntl(STDIN_FILENO, F_GETFD) >= 0;
    if (input >= 0)
        dup2(input, STDIN_FILENO);
    close(input);
    QCOMPARE(identifier, u"abc"_s);
    QVERIFY(!leftOpen);
}

// Here a copy that has made its file, and is about to write into it once the other has begun to wait.
void TestDeviceIdentity::aCopyThatStartsAtTheSameTimeIsWaitedFor()
{
    write(path, QByteArray());
    const int first = open(QFile::encodeName(directory->path()).constData(), O_RDONLY | O_CLOEXEC);
    QCOMPARE(flock(first, LOCK_EX), 0);
    QString second;
    std::thread start([&] { second = loadOrCreateDeviceId(directory->path()); });
    const QString place = QDir(directory->path()).canonicalPath();
    const bool waits = tideloft::tests::waitFor([&] { return timesOpen(place) == 2; });
    write(path, "from the first");
    close(first);
    start.join();
    QVERIFY(waits);
    QCOMPARE(second, u"from the first"_s);
}

TIDELOFT_TEST_MAIN(TestDeviceIdentity)
#include "tst_device_identity.moc"
