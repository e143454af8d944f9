// Which texts are user names and passwords, and what the names become.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/account_rules.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestAccountRules : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void passwordLengths_data();
    void passwordLengths();
};

void TestAccountRules::names_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored"); // empty = refused
    QTest::newRow("as it is") << u"alice"_s << u"alice"_s;
    QTest::newRow("trimmed and lower-cased") << u"  Alice\t"_s << u"alice"_s;
    QTest::newRow("every kind of character") << u"a.b_c-9"_s << u"a.b_c-9"_s;
    QTest::newRow("3 characters") << u"bob"_s << u"bob"_s;
    QTest::newRow("2 characters") << u"bo"_s << QString();
    QTest::newRow("32 characters") << QString(32, u'x') << QString(32, u'x');
    QTest::newRow("33 characters") << QString(33, u'x') << QString();
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("blanks") << u"     "_s << QString();
    QTest::newRow("blank inside") << u"al ice"_s << QString();
    QTest::newRow("only dots") << u"..."_s << QString();
    QTest::newRow("dots and a hyphen") << u"..-"_s << u"..-"_s;
    QTest::newRow("slash") << u"a/b"_s << QString();
    QTest::newRow("percent") << u"a%b"_s << QString();
    QTest::newRow("letter beyond ASCII") << u"bjö"_s << QString();
    QTest::newRow("full-width digits") << u"１２３"_s << QString();
    QTest::newRow("capital that lower-cases to two") << u"İab"_s << QString();
    QTest::newRow("emoji") << u"bob😀"_s << QString();
    QTest::newRow("line break inside") << u"bob\nbob"_s << QString();
    QTest::newRow("zero character") << (u"bob"_s + QChar(0) + u"x"_s) << QString();
    QTest::newRow("SQL") << u"a' or '1'='1"_s << QString();
}

void TestAccountRules::names()
{
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QCOMPARE(normalizedUserName(typed).value_or(QString()), stored);
}

void TestAccountRules::passwordLengths_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("7 characters") << QString(7, u'x') << false;
    QTest::newRow("8 characters") << QString(8, u'x') << true;
    QTest::newRow("8 blanks") << QString(8, u' ') << true;
    QTest::newRow("4 characters of two units") << u"😀"_s.repeated(4) << false;
    QTest::newRow("8 characters of two units") << u"😀"_s.repeated(8) << true;
    QTest::newRow("256 characters") << QString(256, u'x') << true;
    QTest::newRow("256 characters of two units") << u"😀"_s.repeated(256) << true;
    QTest::newRow("257 characters") << QString(257, u'x') << false;
}

void TestAccountRules::passwordLengths()
{
    QFETCH(QString, password);
    QTEST(isPasswordLength(password), "isTaken");
}

TIDELOFT_TEST_MAIN(TestAccountRules)
#include "tst_account_rules.moc"
