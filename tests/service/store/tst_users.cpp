// Users are found by what their names contain.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestUsers : public QObject
{
    Q_OBJECT

private slots:
    void init() { store.reset(new StoreFixture); }
    void beginningGoesBeforeContaining();
    void sameTextTwiceInANameIsFoundOnce();
    void limitHoldsForBoth();
    void searchLooksAtEndsOfNamesAndNotAtAllUsers();
    void deletedIsNotFound();

private:
    QStringList found(const QString &text, int limit = 20) const
    {
        return findNames(store->database, text, store->carol, limit);
    }

    QScopedPointer<StoreFixture> store;
};

void TestUsers::beginningGoesBeforeContaining()
{
    for (const QString &name : {u"zoe.al"_s, u"al_2"_s, u"malin"_s})
        store->add(name);
    QCOMPARE(found(u"al"_s), (QStringList{u"al_2"_s, u"alice"_s, u"malin"_s, u"zoe.al"_s}));
    QCOMPARE(found(u"a_l"_s), QStringList());
    QCOMPARE(found(u"%"_s), QStringList());
    QCOMPARE(found(u"~"_s), QStringList());
    QCOMPARE(found(u"carol"_s), QStringList()); // never oneself
}

void TestUsers::sameTextTwiceInANameIsFoundOnce()
{
    store->add(u"xanan"_s);
    store->add(u"anan"_s);
    QCOMPARE(found(u"an"_s), (QStringList{u"anan"_s, u"xanan"_s}));
}

void TestUsers::limitHoldsForBoth()
{
    for (int i = 10; i < 25; ++i) {
        store->add(u"mo%1"_s.arg(i));
        store->add(u"x.mo%1"_s.arg(i));
    }
    const QStringList names = found(u"mo"_s);
    QCOMPARE(names.size(), 20);
    QCOMPARE(names[14], u"mo24"_s);
    QCOMPARE(names[15], u"x.mo10"_s);
    QCOMPARE(found(u"mo"_s, 15).constLast(), u"mo24"_s);
}

void TestUsers::searchLooksAtEndsOfNamesAndNotAtAllUsers()
{
    QCOMPARE(found(u"lic"_s), QStringList{u"alice"_s});
    store->database.run(u"DELETE FROM name_ends"_s);
    QCOMPARE(found(u"lic"_s), QStringList());
}

void TestUsers::deletedIsNotFound()
{
    deleteUser(store->database, store->alice);
    QCOMPARE(found(u"alice"_s), QStringList());
    QCOMPARE(found(u"lic"_s), QStringList());
    QCOMPARE(store->database.number(u"SELECT count(*) FROM name_ends"_s), 3 + 5); // of bob and carol
}

TIDELOFT_TEST_MAIN(TestUsers)
#include "tst_users.moc"
