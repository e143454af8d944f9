// Places for their owner alone: made so, or mended, unless they may be somebody else's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/permissions.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace tideloft::local_files;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

int modeOf(const QString &path)
{
    struct stat status {
    };
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 07777)
                                                                   : -1;
}

} // namespace

class TestPermissions : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<QTemporaryDir>(); }
    void madeWithItsParentsForItsOwner();
    void onceMadeIsMade();
    void cannotBeMadeWhereAFileIs();
    void directoryBecomesItsOwners();
    void fileBecomesItsOwners_data();
    void fileBecomesItsOwners();
    void whatTheOwnerMayNotDoStaysSo();
    void nothingElseIsTouched_data();
    void nothingElseIsTouched();
    void secondNamesAreLeftAlone();
    void anotherUsersFileIsLeftAlone();

private:
    [[nodiscard]] QString pathOf(const QString &name) const { return home->filePath(name); }

    std::unique_ptr<QTemporaryDir> home;
};

void TestPermissions::madeWithItsParentsForItsOwner()
{
    const mode_t before = umask(0);
    const bool made = makeForOwner(pathOf(u"a/b"_s));
    umask(before);
    QVERIFY(made);
    QCOMPARE(modeOf(pathOf(u"a/b"_s)), 0700);
}

void TestPermissions::onceMadeIsMade()
{
    QVERIFY(makeForOwner(pathOf(u"a"_s)));
    QVERIFY(makeForOwner(pathOf(u"a"_s)));
}

void TestPermissions::cannotBeMadeWhereAFileIs()
{
    QVERIFY(writeFile(pathOf(u"a"_s), "a file"));
    QVERIFY(!makeForOwner(pathOf(u"a"_s)));
    QVERIFY(!makeForOwner(pathOf(u"a/b"_s)));
}

void TestPermissions::directoryBecomesItsOwners()
{
    QCOMPARE(chmod(QFile::encodeName(home->path()).constData(), 0755), 0);
    keepDirectoryForOwner(home->path());
    QCOMPARE(modeOf(home->path()), 0700);
}

void TestPermissions::fileBecomesItsOwners_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("for all") << 0777;
    QTest::newRow("read by others") << 0604;
    QTest::newRow("written by the group") << 0620;
    QTest::newRow("run by its owner") << 0700;
    QTest::newRow("already") << 0600;
}

void TestPermissions::fileBecomesItsOwners()
{
    QFETCH(const int, mode);
    const QString path = pathOf(u"file"_s);
    QVERIFY(writeFile(path, "x"));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), static_cast<mode_t>(mode)), 0);
    keepFileForOwner(path);
    QCOMPARE(modeOf(path), 0600);
}

void TestPermissions::whatTheOwnerMayNotDoStaysSo()
{
    const QString path = pathOf(u"file"_s);
    QVERIFY(writeFile(path, "x"));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0444), 0);
    keepFileForOwner(path);
    QCOMPARE(modeOf(path), 0400);
}

void TestPermissions::nothingElseIsTouched_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("a link's file") << u"link"_s;
    QTest::newRow("a pipe") << u"pipe"_s;
}

// Where opening a pipe would wait for its other end, a hang of this test is its failure.
void TestPermissions::nothingElseIsTouched()
{
    QFETCH(const QString, place);
    QVERIFY(writeFile(pathOf(u"file"_s), "x"));
    QCOMPARE(chmod(QFile::encodeName(pathOf(u"file"_s)).constData(), 0644), 0);
    QVERIFY(QFile::link(pathOf(u"file"_s), pathOf(u"link"_s)));
    QCOMPARE(mkfifo(QFile::encodeName(pathOf(u"pipe"_s)).constData(), 0644), 0);
    QCOMPARE(chmod(QFile::encodeName(pathOf(u"pipe"_s)).constData(), 0644), 0);
    keepFileForOwner(pathOf(place));
    keepDirectoryForOwner(pathOf(place));
    QCOMPARE(modeOf(pathOf(place)), 0644);
}

void TestPermissions::secondNamesAreLeftAlone()
{
    const QString path = pathOf(u"file"_s);
    QVERIFY(writeFile(path, "x"));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0644), 0);
    QCOMPARE(link(QFile::encodeName(path).constData(), QFile::encodeName(pathOf(u"second"_s)).constData()),
             0);
    keepFileForOwner(path);
    QCOMPARE(modeOf(path), 0644);
}

// Root may give files away, others may not: there the place is one that is not theirs already.
void TestPermissions::anotherUsersFileIsLeftAlone()
{
    QString path = u"/etc"_s;
    if (geteuid() == 0) {
        path = pathOf(u"theirs"_s);
        QVERIFY(QDir().mkdir(path));
        QCOMPARE(chmod(QFile::encodeName(path).constData(), 0755), 0);
        QCOMPARE(chown(QFile::encodeName(path).constData(), 65534, 65534), 0);
    }
    const int before = modeOf(path);
    keepDirectoryForOwner(path);
    QCOMPARE(modeOf(path), before);
}

TIDELOFT_TEST_MAIN(TestPermissions)
#include "tst_permissions.moc"
