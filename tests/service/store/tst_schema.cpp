// Databases that an earlier version of the service has written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/groups.h"
#include "service/store/history.h"
#include "service/store/pictures.h"
#include "service/store/schema.h"
#include "service/store/users.h"
#include "service/store/versions.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void firstVersionIsUpgradedWithItsContent();
    void secondVersionIsUpgradedWithItsContent();
    void upgradedAndNewDatabasesAreAlike();
    void brokenUpgradeChangesNothing();
    void picturesHaveOneOwner();
    void picturesGoWithTheirOwner();

private:
    static void writeFirstVersion(const QString &file, const QStringList &more = {});
    static QStringList tables(Database &database);

    QTemporaryDir folder;
};

// As the first version made it, written out once more: what this program makes today may change.
void TestSchema::writeFirstVersion(const QString &file, const QStringList &more)
{
    const QStringList statements{
        u"CREATE TABLE users (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, password TEXT NOT NULL,"
        " bio TEXT NOT NULL DEFAULT '', created_at INTEGER NOT NULL)"_s,
        u"CREATE TABLE sessions (token_hash BLOB PRIMARY KEY, user_id INTEGER NOT NULL REFERENCES users"
        " ON DELETE CASCADE, expires_at INTEGER NOT NULL) WITHOUT ROWID"_s,
        u"CREATE INDEX sessions_by_expiry ON sessions (expires_at)"_s,
        u"CREATE TABLE device_keys (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " device_id TEXT NOT NULL, device_name TEXT NOT NULL, public_key TEXT NOT NULL,"
        " updated_at INTEGER NOT NULL, PRIMARY KEY (user_id, device_id)) WITHOUT ROWID"_s,
        u"CREATE TABLE messages (id INTEGER PRIMARY KEY AUTOINCREMENT,"
        " sender_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " recipient_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, text TEXT NOT NULL,"
        " iv TEXT NOT NULL, recipient_keys TEXT NOT NULL, sender_keys TEXT NOT NULL,"
        " encrypted INTEGER NOT NULL, created_at INTEGER NOT NULL)"_s,
        u"CREATE INDEX messages_by_pair ON messages (sender_id, recipient_id, id)"_s,
        u"CREATE INDEX messages_by_recipient ON messages (recipient_id)"_s,
        u"CREATE TABLE conversations (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " peer_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
        " last_message_id INTEGER NOT NULL REFERENCES messages ON DELETE CASCADE,"
        " PRIMARY KEY (user_id, peer_id)) WITHOUT ROWID"_s,
        u"INSERT INTO users VALUES (1, 'alice', 'hash a', 'bio a', 5), (2, 'bob', 'hash b', '', 6)"_s,
        u"INSERT INTO messages VALUES (1, 1, 2, 'hello', '', '[]', '[]', 0, 7)"_s,
        u"INSERT INTO conversations VALUES (1, 2, 1), (2, 1, 1)"_s,
        u"PRAGMA user_version = 1"_s,
    };
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"first"_s);
        connection.setDatabaseName(file);
        QVERIFY(connection.open());
        for (const QString &statement : statements + more)
            QVERIFY(QSqlQuery(connection).exec(statement));
    }
    QSqlDatabase::removeDatabase(u"first"_s);
}

QStringList TestSchema::tables(Database &database)
{
    Rows query = database.run(u"SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name"_s);
    QStringList definitions;
    while (query.next())
        definitions << query.value(0).toString();
    return definitions;
}

void TestSchema::firstVersionIsUpgradedWithItsContent()
{
    const QString file = folder.filePath(u"content.sqlite"_s);
    writeFirstVersion(file);
    for (int opening = 0; opening < 2; ++opening) {
        Store database(file);
        QCOMPARE(database.pragma(u"user_version"_s).toInt(), currentSchemaVersion(database.engine()));
        const std::optional<User> alice = findUser(database, u"alice"_s);
        const std::optional<User> bob = findUser(database, u"bob"_s);
        QVERIFY(alice && bob);
        QCOMPARE(lockCredentials(database, *alice).hash, QByteArray("hash a"));
        QByteArrayList texts;
        const auto keepText = [&texts](const MessageRow &row) {
            texts << row.text;
            return true;
        };
        visitHistory(database, *bob, *alice, 9, keepText);
        visitConversations(database, *bob, 9, keepText);
        QCOMPARE(texts, (QByteArrayList{"hello", "hello"}));
        QVERIFY(conversationsVersion(database, *bob) != 0);
        QVERIFY(historyVersion(database, *bob, alice->name) != 0);
        QVERIFY(historyVersion(database, *bob, alice->name) != historyVersion(database, *alice, bob->name));
        QCOMPARE(database.number(u"SELECT message_count FROM users WHERE id = 1"_s), 1);
        QCOMPARE(database.number(u"SELECT message_bytes FROM users WHERE id = 1"_s),
                 9);                                          // "hello", "[]", "[]"
        QCOMPARE(groupsOf(database, *alice).size(), opening); // and what is new can be used
        const QString name = u"chess-%1"_s.arg(opening);
        QVERIFY(addGroup(database, *alice, {name, u"Chess"_s, {}, {}}, 8));
        replaceAvatar(database, *alice, name, {"image/png", "png"});
        QCOMPARE(profileOf(database, *alice).pictureName, name);
    }
}

void TestSchema::secondVersionIsUpgradedWithItsContent()
{
    const QString file = folder.filePath(u"second.sqlite"_s);
    writeFirstVersion(
        file,
        {u"CREATE TABLE chat_groups (id INTEGER PRIMARY KEY AUTOINCREMENT, public_id TEXT NOT NULL UNIQUE,"
         " name TEXT NOT NULL, description TEXT NOT NULL, created_at INTEGER NOT NULL)"_s,
         u"CREATE TABLE group_members (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE,"
         " group_id INTEGER NOT NULL REFERENCES chat_groups ON DELETE CASCADE,"
         " PRIMARY KEY (user_id, group_id)) WITHOUT ROWID"_s,
         u"CREATE INDEX group_members_by_group ON group_members (group_id)"_s,
         u"CREATE TABLE pictures (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE,"
         " user_id INTEGER UNIQUE REFERENCES users ON DELETE CASCADE,"
         " group_id INTEGER UNIQUE REFERENCES chat_groups ON DELETE CASCADE,"
         " content_type TEXT NOT NULL, content BLOB NOT NULL, CHECK ((user_id IS NULL) <> (group_id IS NULL)))"_s,
         u"INSERT INTO chat_groups VALUES (1, 'g', 'Chess', '', 8)"_s,
         u"INSERT INTO group_members VALUES (1, 1)"_s,
         u"INSERT INTO pictures VALUES (1, 'icon', NULL, 1, 'image/png', 'png')"_s,
         // What a client had sent twice before that was noticed stays.
         u"INSERT INTO messages VALUES (2, 1, 2, 'sealed', 'nonce', '[]', '[]', 1, 9)"_s,
         u"INSERT INTO messages VALUES (3, 1, 2, 'sealed', 'nonce', '[]', '[]', 1, 9)"_s,
         u"PRAGMA user_version = 2"_s});
    Store database(file);
    QCOMPARE(database.pragma(u"user_version"_s).toInt(), currentSchemaVersion(database.engine()));
    QCOMPARE(groupsOf(database, {1, u"alice"_s}).at(0).iconName, u"icon"_s);
    QVERIFY(groupsVersion(database, {1, u"alice"_s}) != 0);
    QCOMPARE(database.number(u"SELECT message_count FROM users WHERE id = 1"_s), 3);
    QCOMPARE(database.pragma(u"integrity_check"_s).toString(), u"ok"_s);
}

void TestSchema::upgradedAndNewDatabasesAreAlike()
{
    const QString file = folder.filePath(u"old.sqlite"_s);
    writeFirstVersion(file);
    Store upgraded(file);
    Store fresh(folder.filePath(u"new.sqlite"_s));
    QVERIFY(tables(fresh).size() > 8);
    QCOMPARE(tables(upgraded), tables(fresh));
}

void TestSchema::brokenUpgradeChangesNothing()
{
    const QString file = folder.filePath(u"broken.sqlite"_s);
    writeFirstVersion(file, {u"CREATE TABLE pictures (x)"_s}); // stands where a new table belongs
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{file});
    QSqlDatabase connection = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"look"_s);
    connection.setDatabaseName(file);
    QVERIFY(connection.open());
    QVERIFY(!connection.tables().contains(u"chat_groups"_s));
    QSqlQuery version(u"PRAGMA user_version"_s, connection);
    QVERIFY(version.next());
    QCOMPARE(version.value(0).toInt(), 1);
}

void TestSchema::picturesHaveOneOwner()
{
    const QString file = folder.filePath(u"owners.sqlite"_s);
    writeFirstVersion(file);
    Store database(file);
    const QString insert = u"INSERT INTO pictures (name, user_id, group_id, content_type, content)"
                           " VALUES (?, ?, ?, 'image/png', 'x')"_s;
    database.run(u"INSERT INTO chat_groups VALUES (1, 'g', 'Chess', '', 0)"_s);
    database.run(insert, {u"a"_s, 1, {}});
    database.run(insert, {u"b"_s, {}, 1});
    QVERIFY_THROWS_EXCEPTION(StorageError, database.run(insert, {u"c"_s, 2, 1}));
    QVERIFY_THROWS_EXCEPTION(StorageError, database.run(insert, {u"c"_s, {}, {}}));
    QVERIFY_THROWS_EXCEPTION(StorageError, database.run(insert, {u"c"_s, 1, {}}));  // has one already
    QVERIFY_THROWS_EXCEPTION(StorageError, database.run(insert, {u"a"_s, 2, {}}));  // name is taken
    QVERIFY_THROWS_EXCEPTION(StorageError, database.run(insert, {u"c"_s, 99, {}})); // no such user
}

void TestSchema::picturesGoWithTheirOwner()
{
    const QString file = folder.filePath(u"cascade.sqlite"_s);
    writeFirstVersion(file);
    Store database(file);
    const QString name = u"picture"_s;
    replaceAvatar(database, {1, u"alice"_s}, name, {"image/png", "png"});
    QVERIFY(findPicture(database, name));
    database.run(u"DELETE FROM users WHERE id = 1"_s);
    QVERIFY(!findPicture(database, name));
}

TIDELOFT_TEST_MAIN(TestSchema)
#include "tst_schema.moc"
