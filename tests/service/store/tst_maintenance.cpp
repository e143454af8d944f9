// Copies of a database: whole, sound, and never in the way of another file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database_file.h"
#include "service/store/database_lock.h"
#include "service/store/maintenance.h"
#include "tests/service/store/old_database.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

#include <QDir>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestMaintenance : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void copyHoldsWhatWasCommitted();
    void copyIsItsOwnersAlone();
    void copyReplacesNothing();
    void failedCopyLeavesNothing();
    void restoredIsWhatWasCopied();
    void restoringIntoNothingMakesTheDatabase();
    void unusableCopyChangesNothing_data();
    void unusableCopyChangesNothing();
    void journalOfTheOldGoesWithTheOld();
    void onlyWhatWasMadeHereIsGivenAway();
    void databaseInUseIsNotReplaced();
    void olderCopyIsTaken();
    void damageIsSeen();

private:
    static QByteArray users(const QString &file);
    static QString said(const std::function<void()> &work);
    void overwrite(const QString &file, qint64 at, const QByteArray &bytes) const;

    QScopedPointer<StoreFixture> store;
    QString copy;
    QString target;
    QString kept;
};

void TestMaintenance::init()
{
    store.reset(new StoreFixture);
    copy = store->path(u"copy.sqlite"_s);
    target = store->path(u"place/target.sqlite"_s);
    kept = store->path(u"place/kept.sqlite"_s);
}

QByteArray TestMaintenance::users(const QString &file)
{
    Database database(file);
    Rows rows = database.run(u"SELECT name FROM users ORDER BY name"_s);
    QByteArrayList names;
    while (rows.next())
        names << rows.value(0).toByteArray();
    return names.join(' ');
}

QString TestMaintenance::said(const std::function<void()> &work)
{
    try {
        work();
    } catch (const StorageError &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

void TestMaintenance::overwrite(const QString &file, qint64 at, const QByteArray &bytes) const
{
    QFile damaged(file);
    QVERIFY(damaged.open(QIODevice::ReadWrite));
    QVERIFY(damaged.seek(at));
    QCOMPARE(damaged.write(bytes), bytes.size());
}

void TestMaintenance::copyHoldsWhatWasCommitted()
{
    backUp(store->database, copy);
    store->add(u"dave"_s);
    QCOMPARE(users(copy), "alice bob carol");
}

void TestMaintenance::copyIsItsOwnersAlone()
{
    backUp(store->database, copy);
    QCOMPARE(QFile::permissions(copy) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther), 0);
}

void TestMaintenance::copyReplacesNothing()
{
    QFile other(copy);
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("mine") == 4);
    other.close();
    QVERIFY(said([this] { backUp(store->database, copy); }).contains(copy));
    QVERIFY(other.open(QIODevice::ReadOnly));
    QCOMPARE(other.readAll(), "mine");
}

void TestMaintenance::failedCopyLeavesNothing()
{
    const QString nowhere = store->path(u"missing/copy.sqlite"_s);
    QVERIFY(!said([&] { backUp(store->database, nowhere); }).isEmpty());
    const Transaction open(store->database); // in which nothing can be copied
    QVERIFY(!said([this] { backUp(store->database, copy); }).isEmpty());
    QCOMPARE(QDir(store->path({})).entryList({u"copy*"_s}), QStringList());
}

void TestMaintenance::restoredIsWhatWasCopied()
{
    backUp(store->database, copy);
    {
        Store other(target);
        addUser(other, u"zoe"_s, "hash", 1);
    }
    restore(target, copy, kept);
    QCOMPARE(users(target), "alice bob carol");
    QCOMPARE(users(kept), "zoe");
    QCOMPARE(users(copy), "alice bob carol");
    QCOMPARE(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther), 0);
    QCOMPARE(QDir(store->path(u"place"_s)).entryList({u"*unfinished*"_s}), QStringList());
}

void TestMaintenance::restoringIntoNothingMakesTheDatabase()
{
    backUp(store->database, copy);
    restore(target, copy, kept);
    QCOMPARE(users(target), "alice bob carol");
    QVERIFY(!QFile::exists(kept));
}

void TestMaintenance::unusableCopyChangesNothing_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"missing", "no database", "of others", "damaged", "newer", "in use"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void TestMaintenance::unusableCopyChangesNothing()
{
    QFETCH(QString, what);
    {
        Store other(target);
        addUser(other, u"zoe"_s, "hash", 1);
    }
    if (what != u"missing"_s)
        backUp(store->database, copy);
    if (what == u"no database"_s)
        overwrite(copy, 0, QByteArray(4096, 'x'));
    else if (what == u"of others"_s)
        QVERIFY(QFile::remove(copy) && runStatements(copy, {u"CREATE TABLE x (y)"_s}));
    else if (what == u"damaged"_s)
        overwrite(copy, 4096, QByteArray(4096, 'x')); // where the users are
    else if (what == u"newer"_s)
        QVERIFY(runStatements(copy, {u"PRAGMA user_version = 99"_s}));
    const QString from = what == u"in use"_s ? store->file() : copy;
    const QString problem = said([&] { restore(target, from, kept); });
    QVERIFY2(problem.contains(from), qPrintable(problem));
    QCOMPARE(users(target), "zoe");
    QVERIFY(!QFile::exists(kept));
    QCOMPARE(QDir(store->path(u"place"_s)).entryList({u"*unfinished*"_s}), QStringList());
}

// As it lies there after a service was killed.
void TestMaintenance::journalOfTheOldGoesWithTheOld()
{
    backUp(store->database, copy);
    QVERIFY(QDir().mkpath(store->path(u"place"_s)));
    store->add(u"dave"_s); // is in the journal
    QVERIFY(QFile::copy(store->file(), target));
    QVERIFY(QFile::copy(store->file() + u"-wal"_s, target + u"-wal"_s));
    restore(target, copy, kept);
    QCOMPARE(users(target), "alice bob carol");
    QVERIFY(!QFile::exists(kept + u"-wal"_s)); // the old file is whole before the new one takes its place
    QCOMPARE(users(kept), "alice bob carol dave");
}

// Whoever owns the folder may put something else under a name at any moment.
void TestMaintenance::onlyWhatWasMadeHereIsGivenAway()
{
    if (geteuid() != 0)
        return; // nobody else may give files away
    const auto ownerOf = [](const QString &file) { return QFileInfo(file).ownerId(); };
    const auto make = [this](const QString &name) {
        QFile file(store->path(name));
        return file.open(QIODevice::WriteOnly) ? file.fileName() : QString();
    };
    const QString model = make(u"model"_s);
    const QString own = make(u"own"_s);
    const QString theirs = make(u"theirs"_s);
    const QString named = make(u"named"_s);
    QCOMPARE(::chown(qPrintable(model), 12345, 12345), 0);
    QCOMPARE(::chown(qPrintable(theirs), 23456, 23456), 0);
    QVERIFY(QFile::link(own, store->path(u"link"_s)));
    QCOMPARE(::link(qPrintable(named), qPrintable(store->path(u"name"_s))), 0);
    giveToOwnerOf(store->path(u"link"_s), model);
    QCOMPARE(ownerOf(own), 0U);
    giveToOwnerOf(named, model);
    QCOMPARE(ownerOf(named), 0U);
    giveToOwnerOf(theirs, model);
    QCOMPARE(ownerOf(theirs), 23456U);
    giveToOwnerOf(own, model);
    QCOMPARE(ownerOf(own), 12345U);
}

void TestMaintenance::databaseInUseIsNotReplaced()
{
    backUp(store->database, copy);
    const DatabaseLock service(target, DatabaseLock::Kind::Shared);
    const DatabaseLock another(target, DatabaseLock::Kind::Shared);
    QVERIFY(said([this] { restore(target, copy, kept); }).contains(u"is in use"_s));
    QVERIFY(!QFile::exists(target));
}

void TestMaintenance::olderCopyIsTaken()
{
    QVERIFY(makeOldDatabase(1, copy));
    restore(target, copy, kept);
    const Store upgraded(target);
    QCOMPARE(users(target), "alice bob");
}

void TestMaintenance::damageIsSeen()
{
    QCOMPARE(problemsOf(store->database), QStringList());
    const QString file = store->path(u"orphans.sqlite"_s);
    QVERIFY(makeOldDatabase(3, file));
    QVERIFY(runStatements(file, {u"DELETE FROM users WHERE name = 'alice'"_s}));
    Database database(file);
    QCOMPARE(problemsOf(database).size(), 1);
}

TIDELOFT_TEST_MAIN(TestMaintenance)
#include "tst_maintenance.moc"
