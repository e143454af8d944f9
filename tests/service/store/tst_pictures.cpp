// Pictures of users and of groups: each has one picture, the last that was stored, also when several are
// uploaded at once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/groups.h"
#include "service/store/pictures.h"
#include "tests/service/store/store_fixture.h"
#include "tests/service/store/written_change.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestStoredPictures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void lastPictureIsTheOneThatCounts();
    void iconChangesTheGroupsOfItsMembers();
    void manyMayUploadAtOnce();

private:
    static Picture picture(qsizetype size) { return {"image/png", QByteArray(size, 'x')}; }
    Database &database() { return store->database; }
    qint64 rows() { return database().number(u"SELECT count(*) FROM pictures"_s); }

    std::optional<StoreFixture> store;
    qint64 group = 0;
};

void TestStoredPictures::init()
{
    store.emplace();
    addGroup(database(), store->alice, {u"g"_s, u"Chess"_s, {}, {}}, 1);
    group = findGroupRow(database(), store->alice, u"g"_s).value();
}

void TestStoredPictures::lastPictureIsTheOneThatCounts()
{
    replaceAvatar(database(), store->alice, u"first"_s, picture(10));
    replaceAvatar(database(), store->alice, u"second"_s, {"image/gif", "gif"});
    replaceIcon(database(), group, u"third"_s, picture(20));
    replaceIcon(database(), group, u"fourth"_s, picture(30));
    QCOMPARE(rows(), 2);
    QVERIFY(!findPicture(database(), u"first"_s));
    QCOMPARE(findPicture(database(), u"second"_s)->contentType, "image/gif");
    QCOMPARE(findPicture(database(), u"second"_s)->content, "gif");
    QCOMPARE(groupsOf(database(), store->alice).value(0).iconName, u"fourth"_s);
    QCOMPARE(pictureBytes(database(), store->alice), 33);
    QCOMPARE(pictureBytes(database(), store->bob), 0);
}

void TestStoredPictures::iconChangesTheGroupsOfItsMembers()
{
    const auto version = [&](const User &user) {
        return database().number(u"SELECT groups_version FROM users WHERE id = ?"_s, {user.id});
    };
    const qint64 alices = version(store->alice);
    const qint64 bobs = version(store->bob);
    replaceIcon(database(), group, u"icon"_s, picture(20));
    QVERIFY(version(store->alice) != alices);
    QCOMPARE(version(store->bob), bobs);
}

// A server has several writers: none may wait for another one that waits for it.
void TestStoredPictures::manyMayUploadAtOnce()
{
    constexpr int times = 12;
    {
        StoreThreads threads({store->place()});
        QList<std::shared_ptr<WriteOutcome>> outcomes;
        for (int i = 0; i < times; ++i) {
            outcomes << write(threads, [this, i](Database &writer) {
                replaceIcon(writer, group, u"icon%1"_s.arg(i), picture(100'000));
            });
            outcomes << write(threads, [this, i](Database &writer) {
                replaceAvatar(writer, store->alice, u"avatar%1"_s.arg(i), picture(100'000));
            });
        }
        for (const auto &outcome : outcomes)
            QVERIFY(isStored(outcome));
    }
    QCOMPARE(rows(), 2);
    QCOMPARE(pictureBytes(database(), store->alice), 200'000);
}

TIDELOFT_TEST_MAIN(TestStoredPictures)
#include "tst_pictures.moc"
