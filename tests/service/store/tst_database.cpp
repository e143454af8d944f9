// How the database is opened, kept and brought up to date.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database.h"
#include "service/store/schema.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.reset(new QTemporaryDir); }
    void settingsAreSafe();
    void fileIsForTheOwnerOnly();
    void looseRightsAreTightened();
    void contentSurvivesReopening();
    void nothingStaysBesideTheFile();
    void closingLeavesTheJournalToThoseWhoWorkOn();
    void linkIsNotFollowed();
    void foreignKeysHold();
    void boundValuesAreOnlyData();
    void emptyTextIsNotNull();
    void transactionIsUndoneWithoutCommit();
    void newerDatabaseIsLeftAlone();
    void otherFileIsRefused();
    void folderThatCannotBeMade();
    void secondConnectionSeesTheFirst();

private:
    QString file(const QString &name = u"sub/test.sqlite"_s) const { return directory->filePath(name); }
    static void addUser(Database &database, const QString &name)
    {
        database.run(u"INSERT INTO users (name, password, created_at) VALUES (?, ?, 0)"_s, {name, QString()});
    }
    static int count(Database &database, const QString &table)
    {
        Rows query = database.run(u"SELECT count(*) FROM "_s + table);
        return query.next() ? query.value(0).toInt() : -1;
    }

    QScopedPointer<QTemporaryDir> directory;
};

void TestDatabase::settingsAreSafe()
{
    Store database(file());
    QCOMPARE(database.pragma(u"journal_mode"_s).toString(), u"wal"_s);
    QCOMPARE(database.pragma(u"synchronous"_s).toInt(), 2); // FULL
    QCOMPARE(database.pragma(u"foreign_keys"_s).toInt(), 1);
    QCOMPARE(database.pragma(u"busy_timeout"_s).toInt(), 900);
    QCOMPARE(database.pragma(u"user_version"_s).toInt(), currentSchemaVersion(database.engine()));
}

void TestDatabase::fileIsForTheOwnerOnly()
{
    Store database(file());
    addUser(database, u"alice"_s);
    for (const QString &suffix : {u""_s, u"-wal"_s, u"-shm"_s}) {
        const auto others = QFile::permissions(file() + suffix)
                            & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther);
        QVERIFY(QFile::exists(file() + suffix));
        QCOMPARE(others, QFile::Permissions());
    }
    QCOMPARE(QFile::permissions(directory->filePath(u"sub"_s)) & (QFile::ReadOther | QFile::ExeOther),
             QFile::Permissions());
}

void TestDatabase::looseRightsAreTightened()
{
    const auto open = [this] { const Store database(file()); };
    open();
    QVERIFY(QFile::setPermissions(file(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    open();
    QCOMPARE(QFile::permissions(file()) & QFile::ReadOther, QFile::Permissions());
}

void TestDatabase::contentSurvivesReopening()
{
    {
        Store database(file());
        addUser(database, u"alice"_s);
    }
    Store again(file());
    QCOMPARE(count(again, u"users"_s), 1);
    QCOMPARE(again.pragma(u"integrity_check"_s).toString(), u"ok"_s);
}

void TestDatabase::nothingStaysBesideTheFile()
{
    {
        Store database(file());
        addUser(database, u"alice"_s);
        QVERIFY(QFile::exists(file() + u"-wal"_s));
    }
    QVERIFY(!QFile::exists(file() + u"-wal"_s));
    QVERIFY(!QFile::exists(file() + u"-shm"_s));
}

// Emptying the journal waits for whoever reads, and meanwhile nobody can write.
void TestDatabase::closingLeavesTheJournalToThoseWhoWorkOn()
{
    const Store running(file());
    {
        Store byHand(file());
        addUser(byHand, u"alice"_s);
    }
    QVERIFY(QFileInfo(file() + u"-wal"_s).size() > 0);
}

void TestDatabase::linkIsNotFollowed()
{
    QFile other(file(u"of-somebody-else"_s));
    QVERIFY(other.open(QIODevice::WriteOnly));
    const auto rights = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
    QVERIFY(other.setPermissions(rights));
    QVERIFY(other.link(file(u"link.sqlite"_s)));
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{file(u"link.sqlite"_s)});
    QVERIFY(QFile::permissions(other.fileName()) & QFile::ReadOther);
    QCOMPARE(other.size(), 0);
}

void TestDatabase::foreignKeysHold()
{
    Store database(file());
    const QString insert = u"INSERT INTO device_keys VALUES (?, 'd', 'n', 'k', 0)"_s;
    QVERIFY_THROWS_EXCEPTION(StorageError, database.run(insert, {42}));
    addUser(database, u"alice"_s);
    database.run(insert, {1});
    database.run(u"DELETE FROM users"_s);
    QCOMPARE(count(database, u"device_keys"_s), 0);
}

void TestDatabase::boundValuesAreOnlyData()
{
    Store database(file());
    const QString name = u"x'); DROP TABLE users; --"_s;
    addUser(database, name);
    QVERIFY(database.run(u"SELECT 1 FROM users WHERE name = ?"_s, {name}).next());
    QVERIFY(!database.run(u"SELECT 1 FROM users WHERE name = ?"_s, {u"' OR '1'='1"_s}).next());
}

void TestDatabase::emptyTextIsNotNull()
{
    Store database(file());
    addUser(database, u"alice"_s); // its password is a null text
    QVERIFY(database.run(u"SELECT 1 FROM users WHERE password = ?"_s, {QString()}).next());
}

void TestDatabase::transactionIsUndoneWithoutCommit()
{
    Store database(file());
    {
        const Transaction transaction(database);
        addUser(database, u"alice"_s);
    }
    QCOMPARE(count(database, u"users"_s), 0);
    {
        Transaction transaction(database);
        addUser(database, u"alice"_s);
        transaction.commit();
    }
    QCOMPARE(count(database, u"users"_s), 1);
}

void TestDatabase::newerDatabaseIsLeftAlone()
{
    {
        Store database(file());
        const int newer = currentSchemaVersion(database.engine()) + 1;
        database.run(u"PRAGMA user_version = %1"_s.arg(newer));
    }
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{file()});
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{file()}); // and stays as it was
}

void TestDatabase::otherFileIsRefused()
{
    QFile other(file(u"other.txt"_s));
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write(QByteArray(4096, 'x'));
    other.close();
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{other.fileName()});
    QCOMPARE(QFileInfo(other).size(), 4096);
}

void TestDatabase::folderThatCannotBeMade()
{
    QFile inTheWay(file(u"sub"_s));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{file()});
}

void TestDatabase::secondConnectionSeesTheFirst()
{
    Store first(file());
    Store second(file());
    addUser(first, u"alice"_s);
    QCOMPARE(count(second, u"users"_s), 1);
}

TIDELOFT_TEST_MAIN(TestDatabase)
#include "tst_database.moc"
