// Names that were invited.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/invitations.h"
#include "service/store/schema.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestInvitations : public QObject
{
    Q_OBJECT

private slots:
    void invitationIsThereOnce();
    void invitationsAreListedByName();
};

void TestInvitations::invitationIsThereOnce()
{
    const QTemporaryDir folder;
    Store database(folder.filePath(u"test.sqlite"_s));
    QVERIFY(!isInvited(database, u"erin"_s));
    QVERIFY(addInvitation(database, u"erin"_s, 5));
    QVERIFY(!addInvitation(database, u"erin"_s, 6));
    QVERIFY(isInvited(database, u"erin"_s));
    QVERIFY(!isInvited(database, u"eri"_s));
    QVERIFY(removeInvitation(database, u"erin"_s));
    QVERIFY(!removeInvitation(database, u"erin"_s));
    QVERIFY(!isInvited(database, u"erin"_s));
}

void TestInvitations::invitationsAreListedByName()
{
    const QTemporaryDir folder;
    Store database(folder.filePath(u"test.sqlite"_s));
    addInvitation(database, u"frank"_s, 5);
    addInvitation(database, u"erin"_s, 6);
    const QList<Invitation> all = invitations(database);
    QCOMPARE(all.size(), 2);
    QCOMPARE(all[0].name, u"erin"_s);
    QCOMPARE(all[0].createdAt, 6);
    QCOMPARE(all[1].name, u"frank"_s);
}

TIDELOFT_TEST_MAIN(TestInvitations)
#include "tst_invitations.moc"
