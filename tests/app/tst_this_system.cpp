// What the program is promised of the system beyond the toolkit.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/this_system.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>

using namespace tideloft::app;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestThisSystem : public QObject
{
    Q_OBJECT

private slots:
    void crashesLeaveNothing();
    void settingsAreWhereTheToolkitLooks();
    void readingEnds_data();
    void readingEnds();
};

void TestThisSystem::crashesLeaveNothing()
{
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_CORE, &before), 0);
    refuseCoreDumps();
    rlimit limit{};
    QCOMPARE(getrlimit(RLIMIT_CORE, &limit), 0);
    QCOMPARE(limit.rlim_max, std::min<rlim_t>(1, before.rlim_max));
    QCOMPARE(limit.rlim_cur, limit.rlim_max);
}

void TestThisSystem::settingsAreWhereTheToolkitLooks()
{
    const QStringList files = settingsFiles();
    QCOMPARE(files.value(0), QSettings().fileName());
    QCOMPARE(files.value(1), QSettings().fileName() + u".lock"_s);
    QCOMPARE(files.value(2), QSettings(QCoreApplication::organizationName()).fileName());
}

void TestThisSystem::readingEnds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("ends");
    QTest::newRow("nothing there") << u"nothing"_s << true;
    QTest::newRow("a file that is small enough") << u"small"_s << true;
    QTest::newRow("a file that is larger") << u"large"_s << false;
    QTest::newRow("a pipe") << u"pipe"_s << false;
    QTest::newRow("a folder") << u"."_s << false;
}

void TestThisSystem::readingEnds()
{
    QFETCH(const QString, name);
    const QTemporaryDir home;
    QVERIFY(writeFile(home.filePath(u"small"_s), QByteArray(10, 'x')));
    QVERIFY(writeFile(home.filePath(u"large"_s), QByteArray(11, 'x')));
    QCOMPARE(mkfifo(QFile::encodeName(home.filePath(u"pipe"_s)).constData(), 0600), 0);
    QTEST(endsSoon(home.filePath(name), 10), "ends");
}

TIDELOFT_TEST_MAIN(TestThisSystem)
#include "tst_this_system.moc"
