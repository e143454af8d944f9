// From the service's groups to the servers of the rail.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/rail/server_models.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestServerModels : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheOrder();
    void skipsWhatIsNoServer();
    void missingNameIsEmpty();
    void findsTheFirstName();
    void unknownServerHasNoName();
};

namespace
{

QJsonObject group(const QString &id, const QString &name)
{
    return {{u"groupId"_s, id}, {u"name"_s, name}};
}

} // namespace

void TestServerModels::keepsTheOrder()
{
    const QList<ServerModel> expected{{u"g2"_s, u"Beta"_s}, {u"g1"_s, u"Alpha"_s}};
    QCOMPARE(serverModels({group(u"g2"_s, u"Beta"_s), group(u"g1"_s, u"Alpha"_s)}), expected);
    QCOMPARE(serverModels({}), QList<ServerModel>());
}

void TestServerModels::skipsWhatIsNoServer()
{
    const QJsonArray servers{u"text"_s,         7,
                             QJsonValue::Null,  QJsonArray{u"groupId"_s},
                             QJsonObject{},     QJsonObject{{u"groupId"_s, 7}, {u"name"_s, u"Number"_s}},
                             group({}, u"X"_s), group(u"g"_s, u"Good"_s)};
    QCOMPARE(serverModels(servers), (QList<ServerModel>{{u"g"_s, u"Good"_s}}));
}

void TestServerModels::missingNameIsEmpty()
{
    const QJsonArray servers{QJsonObject{{u"groupId"_s, u"g"_s}},
                             QJsonObject{{u"groupId"_s, u"h"_s}, {u"name"_s, 5}}};
    QCOMPARE(serverModels(servers), (QList<ServerModel>{{u"g"_s, {}}, {u"h"_s, {}}}));
}

void TestServerModels::findsTheFirstName()
{
    const QJsonArray servers{group(u"a"_s, u"One"_s), group(u"b"_s, u"Two"_s), group(u"b"_s, u"Three"_s)};
    QCOMPARE(serverName(servers, u"b"_s), u"Two"_s);
}

void TestServerModels::unknownServerHasNoName()
{
    QCOMPARE(serverName({group(u"a"_s, u"One"_s)}, u"A"_s), QString());
    QCOMPARE(serverName({}, u"a"_s), QString());
}

TIDELOFT_TEST_MAIN(TestServerModels)
#include "tst_server_models.moc"
