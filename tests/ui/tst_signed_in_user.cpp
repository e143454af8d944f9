// Who is signed in, and whose picture may be shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/signed_in_user.h"

#include <QTest>

using namespace Qt::StringLiterals;
using tideloft::ui::SignedInUser;

class TestSignedInUser : public QObject
{
    Q_OBJECT

private slots:
    void theNameIsTrimmedAndInSmallLetters();
    void theSameUserIsKnownAgain();
    void anotherUserIsNoticed();
    void pictureOfAnotherUserIsNotShown();
};

namespace
{

QJsonObject profile(const QString &name)
{
    return {{u"username"_s, name}};
}

} // namespace

void TestSignedInUser::theNameIsTrimmedAndInSmallLetters()
{
    SignedInUser account;
    QVERIFY(account.username().isEmpty());
    account.signIn(profile(u" Alice "_s));
    QCOMPARE(account.username(), u"alice"_s);
    account.signOut();
    QVERIFY(account.username().isEmpty());
    QCOMPARE(account.lastUsername(), u"alice"_s);
}

void TestSignedInUser::theSameUserIsKnownAgain()
{
    SignedInUser account;
    account.signIn(profile(u"alice"_s));
    account.signOut();
    QVERIFY(account.signIn(profile(u"ALICE"_s)));
}

void TestSignedInUser::anotherUserIsNoticed()
{
    SignedInUser account;
    QVERIFY(!account.signIn(profile(u"alice"_s)));
    account.signOut();
    QVERIFY(!account.signIn(profile(u"bob"_s)));
    QVERIFY(!account.signIn(profile(u"alice"_s)));
}

void TestSignedInUser::pictureOfAnotherUserIsNotShown()
{
    SignedInUser account;
    account.signIn(profile(u"alice"_s));
    QVERIFY(account.ownsPicture());
    account.beginPicture();
    QVERIFY(account.ownsPicture());
    account.signOut();
    QVERIFY(!account.ownsPicture());
    account.signIn(profile(u"bob"_s));
    QVERIFY(!account.ownsPicture());
    account.signIn(profile(u"alice"_s));
    QVERIFY(account.ownsPicture());
}

TIDELOFT_TEST_MAIN(TestSignedInUser)
#include "tst_signed_in_user.moc"
