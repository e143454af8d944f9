// The two key files: where they are, what is in them, who may read them, and every refusal.
#include "crypto/key_store.h"
#include "tests/crypto/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

// What others could do with a file at the moment at which its permissions were about to be set.
mode_t modeBeforeChange = 0;

} // namespace

// Stands before the C library's own in this program: the end alone does not show how a file began.
extern "C" int fchmod(int file, mode_t mode) noexcept
{
    struct stat status {
    };
    fstat(file, &status);
    modeBeforeChange = status.st_mode & 0777;
    return static_cast<int>(syscall(SYS_fchmod, file, mode));
}

namespace
{

using Writer = bool (*)(const QString &, QString *);
using Reader = QString (*)(QString *);

int modeOf(const QString &path)
{
    struct stat status {
    };
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 0777)
                                                                   : -1;
}

// Root may write anywhere, so a test that needs a refusal gives the right up for a while.
class Unprivileged
{
public:
    Unprivileged() : dropped(geteuid() == 0 && seteuid(65534) == 0) {}
    Q_DISABLE_COPY_MOVE(Unprivileged)
    ~Unprivileged()
    {
        if (dropped && seteuid(0) != 0)
            qFatal("The test could not become root again.");
    }

private:
    bool dropped;
};

// One row for each half, so that both are held to the same rules.
void addHalves()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<QString>("path");
    QTest::addColumn<Writer>("write");
    QTest::addColumn<Reader>("read");
    const QString directory = dataLocation();
    QTest::newRow("private") << u"private"_s << directory + u"/chat_private_key.b64"_s
                             << Writer(writePrivateKeyFile) << Reader(readPrivateKeyFile);
    QTest::newRow("public") << u"public"_s << directory + u"/chat_public_key.b64"_s
                            << Writer(writePublicKeyFile) << Reader(readPublicKeyFile);
}

QString capitalised(const QString &half)
{
    return half.left(1).toUpper() + half.mid(1);
}

} // namespace

Q_DECLARE_METATYPE(Writer)
Q_DECLARE_METATYPE(Reader)

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
    void ensureCreatesBothAndThenLeavesThemAlone();
    void losingThePublicHalfReplacesThePrivateOne();
    void contentOfExistingFilesIsNotChecked();
    void ensureReportsAnUnwritableDirectory();
    void writtenTextReadsBack_data() { addHalves(); }
    void writtenTextReadsBack();
    void newFileIsTheOwnersAlone_data() { addHalves(); }
    void newFileIsTheOwnersAlone();
    void earlierFileBecomesTheOwnersAlone_data() { addHalves(); }
    void earlierFileBecomesTheOwnersAlone();
    void shorterTextReplacesTheWholeFile_data() { addHalves(); }
    void shorterTextReplacesTheWholeFile();
    void blankTextIsRefusedAndTouchesNothing_data() { addHalves(); }
    void blankTextIsRefusedAndTouchesNothing();
    void directoryInTheFilesPlaceIsReported_data() { addHalves(); }
    void directoryInTheFilesPlaceIsReported();
    void readOnlyDirectoryIsReported_data() { addHalves(); }
    void readOnlyDirectoryIsReported();
    void pipeIsNotOpened();
    void missingFileIsReportedWithItsPath_data() { addHalves(); }
    void missingFileIsReportedWithItsPath();
    void outerWhiteSpaceIsRemovedOnReading_data() { addHalves(); }
    void outerWhiteSpaceIsRemovedOnReading();
    void blankFileReadsAsEmptyWithoutAMessage_data() { addHalves(); }
    void blankFileReadsAsEmptyWithoutAMessage();
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

void TestKeyStore::ensureCreatesBothAndThenLeavesThemAlone()
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

void TestKeyStore::losingThePublicHalfReplacesThePrivateOne()
{
    QVERIFY(writePrivateKeyFile(u"the old key"_s));
    QVERIFY(!publicKeyExists());
    QVERIFY(ensureKeyPair());
    QVERIFY(publicKeyExists());
    QVERIFY(readFile(privateKeyPath()) != "the old key");
    QVERIFY(!readFile(privateKeyPath()).isEmpty());
}

void TestKeyStore::contentOfExistingFilesIsNotChecked()
{
    QVERIFY(writePrivateKeyFile(u"nonsense"_s));
    QVERIFY(writePublicKeyFile(u"more of it"_s));
    QVERIFY(ensureKeyPair());
    QCOMPARE(readFile(privateKeyPath()), QByteArray("nonsense"));
    QCOMPARE(readFile(publicKeyPath()), QByteArray("more of it"));
}

void TestKeyStore::ensureReportsAnUnwritableDirectory()
{
    QVERIFY(QDir().mkdir(privateKeyPath()));
    QString error;
    QVERIFY(!ensureKeyPair(&error));
    QCOMPARE(error, u"Could not write private key file: "_s + privateKeyPath());
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

void TestKeyStore::newFileIsTheOwnersAlone()
{
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    const mode_t before = umask(0); // nothing but the program itself keeps others out now
    const bool written = write(u"QUJD"_s, nullptr);
    umask(before);
    QVERIFY(written);
    QCOMPARE(modeOf(path), 0600);
    QCOMPARE(modeBeforeChange, mode_t(0600)); // from its first moment
}

void TestKeyStore::earlierFileBecomesTheOwnersAlone()
{
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    QVERIFY(!appDataDir().isEmpty());
    QVERIFY(writeFile(path, "earlier"));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0666), 0);
    QVERIFY(write(u"QUJD"_s, nullptr));
    QCOMPARE(modeBeforeChange, mode_t(0666));
    QCOMPARE(modeOf(path), 0600);
    QCOMPARE(readFile(path), QByteArray("QUJD"));
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

void TestKeyStore::directoryInTheFilesPlaceIsReported()
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

void TestKeyStore::readOnlyDirectoryIsReported()
{
    QFETCH(const QString, half);
    QFETCH(const QString, path);
    QFETCH(const Writer, write);
    const QByteArray directory = QFile::encodeName(appDataDir());
    QCOMPARE(chmod(qgetenv("HOME").constData(), 0755), 0); // or another user could not even look
    QCOMPARE(chmod(directory.constData(), 0555), 0);
    QString error;
    {
        const Unprivileged user;
        QVERIFY(!write(u"QUJD"_s, &error));
    }
    QCOMPARE(chmod(directory.constData(), 0755), 0);
    QCOMPARE(error, u"Could not write %1 key file: "_s.arg(half) + path);
    QVERIFY(!QFile::exists(path));
}

// Reading it would wait for ever: a hang of this test is its failure.
void TestKeyStore::pipeIsNotOpened()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"chat_private_key.b64"_s);
    QCOMPARE(mkfifo(path.toUtf8().constData(), 0600), 0);
    QString error;
    QVERIFY(readTrimmedFile(path, &error).isEmpty());
    QCOMPARE(error, u"Could not open file: "_s + path);
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
