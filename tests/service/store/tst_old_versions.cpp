// A database of every version that there ever was is brought to the present form with all that is in it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/secrets/password_hash.h"
#include "service/store/device_keys.h"
#include "service/store/groups.h"
#include "service/store/history.h"
#include "service/store/maintenance.h"
#include "service/store/pictures.h"
#include "service/store/schema.h"
#include "service/store/sqlite_engine.h"
#include "tests/service/store/old_database.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestOldVersions : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void everyVersionHasItsDatabase();
    void everythingIsKept_data() { versions(); }
    void everythingIsKept();
    void countsAreThoseOfTheMessages_data() { versions(); }
    void countsAreThoseOfTheMessages();
    void whoBeganAConversationIsKnown_data() { versions(); }
    void whoBeganAConversationIsKnown();
    void usersAreFoundByTheirNames_data() { versions(); }
    void usersAreFoundByTheirNames();
    void formIsThatOfANewDatabase_data() { versions(); }
    void formIsThatOfANewDatabase();
    void newerIsRefusedWithItsName();
    void foreignIsNoDatabaseOfTheService();

private:
    static int newestVersion() { return currentSchemaVersion(SqliteEngine({})); }
    static void versions();
    static QStringList definitions(Database &database);
    static QByteArrayList textsBetween(Database &database, const User &user, const User &peer);

    QScopedPointer<QTemporaryDir> folder;
    QString file;
};

void TestOldVersions::init()
{
    folder.reset(new QTemporaryDir);
    file = folder->filePath(u"test.sqlite"_s);
}

void TestOldVersions::versions()
{
    QTest::addColumn<int>("version");
    for (int version = 1; version < newestVersion(); ++version)
        QTest::addRow("version %d", version) << version;
}

QStringList TestOldVersions::definitions(Database &database)
{
    Rows rows = database.run(u"SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name"_s);
    QStringList all;
    while (rows.next())
        all << rows.value(0).toString();
    return all;
}

QByteArrayList TestOldVersions::textsBetween(Database &database, const User &user, const User &peer)
{
    QByteArrayList texts;
    visitHistory(database, user, peer, 100, [&texts](const MessageRow &row) {
        texts.prepend(row.text);
        return true;
    });
    return texts;
}

// Who makes a new version leaves one of the last here.
void TestOldVersions::everyVersionHasItsDatabase()
{
    QCOMPARE(QDir(QStringLiteral(OLD_DATABASES)).entryList(QDir::Files).size(), newestVersion() - 1);
}

void TestOldVersions::everythingIsKept()
{
    QFETCH(int, version);
    QVERIFY(makeOldDatabase(version, file));
    Store database(file);
    QCOMPARE(database.pragma(u"user_version"_s).toInt(), newestVersion());
    QCOMPARE(problemsOf(database), QStringList());
    const User alice = findUser(database, u"alice"_s).value();
    const User bob = findUser(database, u"bob"_s).value();
    QVERIFY(passwordMatches(u"a good password"_s, lockCredentials(database, alice).hash));
    QCOMPARE(stateOf(database, alice), UserState::Active);
    QCOMPARE(profileOf(database, alice).bio, u"I sail."_s);
    QCOMPARE(deviceKeys(database, alice).value(0).deviceName, u"Desk"_s);
    QCOMPARE(textsBetween(database, bob, alice).constLast(), u"it's me \U0001F44B"_s.toUtf8());
    QCOMPARE(textsBetween(database, bob, bob), QByteArrayList{"a note to myself"});
    QByteArrayList conversations;
    visitConversations(database, bob, 10, [&conversations](const MessageRow &row) {
        conversations << row.peer.toLatin1();
        return true;
    });
    QCOMPARE(conversations, (QByteArrayList{"bob", "alice"}));
    QCOMPARE(database.number(u"SELECT count(*) FROM sessions"_s), 2);
    if (version < 2) // there were none
        return;
    QCOMPARE(groupsOf(database, alice).value(0).name, u"Chess"_s);
    QVERIFY(findPicture(database, groupsOf(database, alice).value(0).iconName));
    QVERIFY(findPicture(database, profileOf(database, alice).pictureName));
}

void TestOldVersions::countsAreThoseOfTheMessages()
{
    QFETCH(int, version);
    QVERIFY(makeOldDatabase(version, file));
    Store database(file);
    const QString wrong = u"SELECT count(*) FROM users WHERE %1 <> (SELECT coalesce(%2, 0) FROM messages"
                          " WHERE sender_id = users.id)"_s;
    QCOMPARE(database.number(wrong.arg(u"message_count"_s, u"count(*)"_s)), 0);
    const QString size =
        u"sum(length(CAST(text AS BLOB)) + length(iv) + length(recipient_keys) + length(sender_keys))"_s;
    QCOMPARE(database.number(wrong.arg(u"message_bytes"_s, size)), 0);
}

void TestOldVersions::whoBeganAConversationIsKnown()
{
    QFETCH(int, version);
    QVERIFY(makeOldDatabase(version, file));
    Store database(file);
    Rows rows = database.run(u"SELECT one.name, two.name, begun FROM conversations JOIN users AS one"
                             " ON one.id = user_id JOIN users AS two ON two.id = peer_id ORDER BY 1, 2"_s);
    QStringList found;
    while (rows.next())
        found << rows.value(0).toString() + u' ' + rows.value(1).toString() + u' ' + rows.value(2).toString();
    QCOMPARE(found, (QStringList{u"alice bob 1"_s, u"bob alice 0"_s, u"bob bob 1"_s}));
}

void TestOldVersions::usersAreFoundByTheirNames()
{
    QFETCH(int, version);
    QVERIFY(makeOldDatabase(version, file));
    Store database(file);
    const User bob = findUser(database, u"bob"_s).value();
    for (const QString &part : {u"alice"_s, u"lic"_s, u"e"_s})
        QCOMPARE(findNames(database, part, bob, 9), QStringList{u"alice"_s});
}

void TestOldVersions::formIsThatOfANewDatabase()
{
    QFETCH(int, version);
    QVERIFY(makeOldDatabase(version, file));
    Store upgraded(file);
    Store fresh(folder->filePath(u"new.sqlite"_s));
    QVERIFY(definitions(fresh).size() > 8);
    QCOMPARE(definitions(upgraded), definitions(fresh));
}

void TestOldVersions::newerIsRefusedWithItsName()
{
    const int newer = newestVersion() + 1;
    QVERIFY(makeOldDatabase(1, file));
    QVERIFY(runStatements(file, {u"PRAGMA user_version = %1"_s.arg(newer)}));
    try {
        const Store database(file);
        QFAIL("The newer database was opened.");
    } catch (const StorageError &error) {
        const QString said = QString::fromUtf8(error.what());
        QVERIFY2(said.contains(file) && said.contains(u"version %1,"_s.arg(newer)), qPrintable(said));
    }
}

void TestOldVersions::foreignIsNoDatabaseOfTheService()
{
    QVERIFY(runStatements(file, {u"CREATE TABLE x (y)"_s}));
    Database database(file);
    QVERIFY_THROWS_EXCEPTION(StorageError, requireKnownVersion(database));
}

TIDELOFT_TEST_MAIN(TestOldVersions)
#include "tst_old_versions.moc"
