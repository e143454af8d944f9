// What is found out of a start before it is made.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/start_check.h"
#include "service/store/schema.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestStartCheck : public QObject
{
    Q_OBJECT

private slots:
    void newDatabaseIsNotMade();
    void databaseOfAnyVersionUpToThisIsGood();
    void nothingIsMadeBesideTheDatabase();
    void databaseOfANewerProgramIsRefused();
    void whatIsNoDatabaseIsRefused();
    void folderThatIsNoneIsRefused();
    void folderThatCannotBeWrittenIsRefused();
    void certificateThatIsMissingIsNamed();

private:
    QString path(const QString &name) const { return folder.filePath(name); }

    QTemporaryDir folder;
};

void TestStartCheck::newDatabaseIsNotMade()
{
    const StartCheck check = checkStart({}, path(u"a/b/new.sqlite"_s));
    QCOMPARE(check.problems, QStringList());
    QCOMPARE(check.warnings, QStringList());
    QVERIFY(!QFile::exists(path(u"a"_s)));
}

void TestStartCheck::databaseOfAnyVersionUpToThisIsGood()
{
    const Store running(path(u"good.sqlite"_s));
    QCOMPARE(checkStart({}, path(u"good.sqlite"_s)).problems, QStringList());
}

// A file that is made and taken away again would change the time of the folder.
void TestStartCheck::nothingIsMadeBesideTheDatabase()
{
    const QString file = path(u"stopped.sqlite"_s);
    static_cast<void>(Store(file));
    const timespec longAgo[]{{1000, 0}, {1000, 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(folder.path()).constData(), longAgo, 0), 0);
    QCOMPARE(checkStart({}, file).problems, QStringList());
    QCOMPARE(QFileInfo(folder.path()).lastModified().toSecsSinceEpoch(), 1000);
}

void TestStartCheck::databaseOfANewerProgramIsRefused()
{
    const QString file = path(u"newer.sqlite"_s);
    {
        Store newer(file);
        newer.run(u"PRAGMA user_version = %1"_s.arg(currentSchemaVersion(newer.engine()) + 1));
    }
    QCOMPARE(checkStart({}, file).problems,
             QStringList{u"A newer version of the program wrote the database "_s + file});
}

void TestStartCheck::whatIsNoDatabaseIsRefused()
{
    QFile text(path(u"text.sqlite"_s));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(5000, 'x'));
    text.close();
    const QStringList problems = checkStart({}, text.fileName()).problems;
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems[0].startsWith(text.fileName()), qPrintable(problems[0]));
    QVERIFY(QDir(folder.path()).mkdir(u"folder.sqlite"_s));
    QCOMPARE(checkStart({}, path(u"folder.sqlite"_s)).problems,
             QStringList{u"The database %1 cannot be written"_s.arg(path(u"folder.sqlite"_s))});
}

void TestStartCheck::folderThatIsNoneIsRefused()
{
    QCOMPARE(checkStart({}, u"/dev/null/a/b.sqlite"_s).problems,
             QStringList{u"/dev/null is no folder, so the database cannot be made in it"_s});
}

// Root may write everywhere, so the check is then made as somebody else.
void TestStartCheck::folderThatCannotBeWrittenIsRefused()
{
    constexpr uid_t nobody = 65534;
    constexpr QFile::Permissions mayBeRead(0x5555);
    const bool isRoot = geteuid() == 0;
    QVERIFY(QDir(folder.path()).mkdir(u"closed"_s));
    QVERIFY(QFile::setPermissions(path(u"closed"_s), mayBeRead));
    QVERIFY(QFile::setPermissions(folder.path(), mayBeRead | QFile::WriteOwner));
    QVERIFY(!isRoot || seteuid(nobody) == 0);
    const QStringList problems = checkStart({}, path(u"closed/b.sqlite"_s)).problems;
    QVERIFY(!isRoot || seteuid(0) == 0);
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems[0].endsWith(u" of the database cannot be written"_s), qPrintable(problems[0]));
}

void TestStartCheck::certificateThatIsMissingIsNamed()
{
    Options options;
    options.certificateFile = path(u"missing.pem"_s);
    options.keyFile = path(u"missing-key.pem"_s);
    const QStringList problems = checkStart(options, path(u"new.sqlite"_s)).problems;
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems[0].contains(options.certificateFile), qPrintable(problems[0]));
}

TIDELOFT_TEST_MAIN(TestStartCheck)
#include "tst_start_check.moc"
