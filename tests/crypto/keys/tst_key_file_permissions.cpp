// Who may read the key files, from their first moment on.
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

} // namespace

class TestKeyFilePermissions : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        removeDataDir();
        modeBeforeChange = 0;
    }
    void cleanupTestCase() { removeDataDir(); }
    void newFileIsTheOwnersAlone_data() { addHalves(); }
    void newFileIsTheOwnersAlone();
    void earlierFileBecomesTheOwnersAlone_data() { addHalves(); }
    void earlierFileBecomesTheOwnersAlone();
    void newDirectoryIsTheOwnersAlone();
    void widerDirectoryIsMended_data();
    void widerDirectoryIsMended();
    void directoryBehindALinkIsMended();
    void widerFilesAreMendedAtSignIn();
    void whatMayBeAnothersIsLeftAsItIs();
    void directoryOfAnotherUserServesAsItIs();
    void readOnlyDirectoryIsReported_data() { addHalves(); }
    void readOnlyDirectoryIsReported();
};

void TestKeyFilePermissions::newFileIsTheOwnersAlone()
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

void TestKeyFilePermissions::earlierFileBecomesTheOwnersAlone()
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

void TestKeyFilePermissions::newDirectoryIsTheOwnersAlone()
{
    const mode_t before = umask(0);
    const QString directory = appDataDir();
    umask(before);
    QCOMPARE(modeOf(directory), 0700);
    QCOMPARE(modeBeforeChange, mode_t(0)); // from its first moment
}

void TestKeyFilePermissions::widerDirectoryIsMended_data()
{
    QTest::addColumn<int>("found");
    QTest::addColumn<int>("left");
    for (const int found : {0701, 0710, 0740, 0755, 0777})
        QTest::addRow("%o", found) << found << 0700;
    QTest::newRow("closed to writing too") << 0555 << 0500;
    QTest::newRow("narrow already") << 0700 << 0700;
}

void TestKeyFilePermissions::widerDirectoryIsMended()
{
    QFETCH(const int, found);
    QFETCH(const int, left);
    QVERIFY(QDir().mkpath(dataLocation()));
    QCOMPARE(chmod(QFile::encodeName(dataLocation()).constData(), static_cast<mode_t>(found)), 0);
    QCOMPARE(appDataDir(), dataLocation());
    QCOMPARE(modeOf(dataLocation()), left);
}

void TestKeyFilePermissions::directoryBehindALinkIsMended()
{
    const QTemporaryDir elsewhere;
    QCOMPARE(chmod(QFile::encodeName(elsewhere.path()).constData(), 0755), 0);
    QVERIFY(QDir().mkpath(QFileInfo(dataLocation()).path()));
    QVERIFY(QFile::link(elsewhere.path(), dataLocation()));
    QCOMPARE(appDataDir(), dataLocation());
    QCOMPARE(modeOf(elsewhere.path()), 0700);
    QVERIFY(QFile::remove(dataLocation()));
}

// What a version before this one wrote, or somebody copied here.
void TestKeyFilePermissions::widerFilesAreMendedAtSignIn()
{
    QVERIFY(ensureKeyPair());
    for (const QString &path : {privateKeyPath(), publicKeyPath()})
        QCOMPARE(chmod(QFile::encodeName(path).constData(), 0777), 0);
    const QByteArray key = readFile(privateKeyPath());
    QVERIFY(ensureKeyPair());
    QCOMPARE(modeOf(privateKeyPath()), 0600);
    QCOMPARE(modeOf(publicKeyPath()), 0600);
    QCOMPARE(readFile(privateKeyPath()), key);
}

void TestKeyFilePermissions::whatMayBeAnothersIsLeftAsItIs()
{
    const QTemporaryDir elsewhere;
    const QString document = elsewhere.filePath(u"document"_s);
    const QByteArray name = QFile::encodeName(document);
    QVERIFY(!appDataDir().isEmpty() && writeFile(document, "dear diary"));
    QCOMPARE(chmod(name.constData(), 0644), 0);
    QCOMPARE(symlink(name.constData(), QFile::encodeName(privateKeyPath()).constData()), 0);
    QCOMPARE(link(name.constData(), QFile::encodeName(publicKeyPath()).constData()), 0);
    QVERIFY(ensureKeyPair());
    QCOMPARE(modeOf(document), 0644);
}

void TestKeyFilePermissions::directoryOfAnotherUserServesAsItIs()
{
    QVERIFY(QDir().mkpath(dataLocation()));
    const QByteArray directory = QFile::encodeName(dataLocation());
    if (geteuid() == 0) // or there is nobody else to give it to
        QCOMPARE(chown(directory.constData(), 65534, 65534), 0);
    QCOMPARE(chmod(directory.constData(), 0777), 0);
    QVERIFY(writePrivateKeyFile(u"QUJD"_s));
    QCOMPARE(modeOf(dataLocation()), geteuid() == 0 ? 0777 : 0700);
    QCOMPARE(modeOf(privateKeyPath()), 0600);
}

void TestKeyFilePermissions::readOnlyDirectoryIsReported()
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

TIDELOFT_TEST_MAIN(TestKeyFilePermissions)
#include "tst_key_file_permissions.moc"
