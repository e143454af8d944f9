// Texts of JSON objects without the white space around them, and nothing of what is no text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/trimmed_member.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

class TestTrimmedMember : public QObject
{
    Q_OBJECT

private slots:
    void onlyTextsCount_data();
    void onlyTextsCount();
    void aMissingMemberIsEmpty();
};

void TestTrimmedMember::onlyTextsCount_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("text") << QJsonValue(u"a b"_s) << u"a b"_s;
    QTest::newRow("white space around") << QJsonValue(u" \t\na b\r\n"_s) << u"a b"_s;
    QTest::newRow("blank") << QJsonValue(u"  "_s) << QString();
    QTest::newRow("number") << QJsonValue(1) << QString();
    QTest::newRow("null") << QJsonValue() << QString();
    QTest::newRow("object") << QJsonValue(QJsonObject{{u"member"_s, u"a"_s}}) << QString();
}

void TestTrimmedMember::onlyTextsCount()
{
    QFETCH(const QJsonValue, value);
    QTEST(trimmedMember({{u"member"_s, value}, {u"other"_s, u"b"_s}}, u"member"_s), "expected");
}

void TestTrimmedMember::aMissingMemberIsEmpty()
{
    QVERIFY(trimmedMember({{u"other"_s, u"b"_s}}, u"member"_s).isEmpty());
}

TIDELOFT_TEST_MAIN(TestTrimmedMember)
#include "tst_trimmed_member.moc"
