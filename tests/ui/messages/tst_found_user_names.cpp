// From search items to names.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/messages/found_user_names.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestFoundUserNames : public QObject
{
    Q_OBJECT

private slots:
    void usersFound_data();
    void usersFound();
};

void TestFoundUserNames::usersFound_data()
{
    QTest::addColumn<QByteArray>("users");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *users, const QStringList &expected) {
        QTest::newRow(name) << QByteArray(users) << expected;
    };
    row("in the order of the reply", R"([{"username":"b"},{"username":"a"}])", {u"b"_s, u"a"_s});
    row("no usable entry", R"(["a",7,null,{},{"username":" "},{"username":5}])", {});
    row("blanks around are dropped", R"([{"username":" Bob\n"}])", {u"Bob"_s});
    row("none", "[]", {});
}

void TestFoundUserNames::usersFound()
{
    QFETCH(const QByteArray, users);
    QFETCH(const QStringList, expected);
    QCOMPARE(foundUserNames(QJsonDocument::fromJson(users).array()), expected);
}

TIDELOFT_TEST_MAIN(TestFoundUserNames)
#include "tst_found_user_names.moc"
