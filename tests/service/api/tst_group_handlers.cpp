// Groups over the wire: who sees which, and what may be their name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/groups.h"
#include "tests/service/api_server.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

void addTexts(const char *label, const QJsonValue &name, const QJsonValue &description, int status)
{
    QTest::newRow(label) << name << description << status;
}

void addNames()
{
    const QString emoji = u"😀"_s;
    addTexts("one character", u"x"_s, u""_s, 201);
    addTexts("32 characters", QString(32, u'x'), u""_s, 201);
    addTexts("33 characters", QString(33, u'x'), u""_s, 400);
    addTexts("32 emoji", emoji.repeated(32), u""_s, 201);
    addTexts("33 emoji", emoji.repeated(33), u""_s, 400);
    addTexts("32 characters among 2000 blanks", QString(1000, u' ') + QString(32, u'x') + QString(1000, u' '),
             u""_s, 201);
    addTexts("empty name", u""_s, u""_s, 400);
    addTexts("name of blanks", u" \t\n "_s, u""_s, 400);
    addTexts("no name", QJsonValue(QJsonValue::Undefined), u""_s, 400);
    addTexts("name is a number", 5, u""_s, 400);
    addTexts("name is null", QJsonValue(), u""_s, 400);
    addTexts("NUL in the name", QString(u"a"_s + QChar(0) + u"b"_s), u""_s, 400);
    addTexts("escape in the name", u"a\x1b[2J"_s, u""_s, 400);
    addTexts("delete in the name", u"a\x7f"_s, u""_s, 400);
    addTexts("C1 control in the name", u"a\u0086b"_s, u""_s, 400);
    addTexts("control character at the end of the name", u"a\x01"_s, u""_s, 400);
    addTexts("only a line separator", u"\u2028"_s, u""_s, 400);
    addTexts("only a paragraph separator", u"\u2029"_s, u""_s, 400);
    addTexts("only a zero-width space", u"\u200b"_s, u""_s, 400);
    addTexts("marks of direction and blanks", u"\u200e \u202e\u2066 \u00a0"_s, u""_s, 400);
    addTexts("only a tag beyond the first plane", QString::fromUcs4(U"\U000E0041"), u""_s, 400);
    addTexts("joined emoji", u"👩\u200d💻"_s, u""_s, 201);
}

void addDescriptions()
{
    const QString emoji = u"😀"_s;
    addTexts("200 characters of description", u"x"_s, QString(200, u'd'), 201);
    addTexts("201 characters of description", u"x"_s, QString(201, u'd'), 400);
    addTexts("200 emoji of description", u"x"_s, emoji.repeated(200), 201);
    addTexts("201 emoji of description", u"x"_s, emoji.repeated(201), 400);
    addTexts("200 characters among blanks", u"x"_s, u"  "_s + QString(200, u'd') + u"\n "_s, 201);
    addTexts("description of blanks", u"x"_s, u"  "_s, 201);
    addTexts("no description", u"x"_s, QJsonValue(QJsonValue::Undefined), 400);
    addTexts("description is an array", u"x"_s, QJsonArray(), 400);
    addTexts("NUL in the description", u"x"_s, QString(u"a"_s + QChar(0) + u"b"_s), 400);
    addTexts("escape in the description", u"x"_s, u"a\x1b[2J"_s, 400);
    addTexts("vertical tab in the description", u"x"_s, u"a\vb"_s, 400);
    addTexts("line breaks and tabs in the description", u"x"_s, u"a\n\n\tb\r\n  c"_s, 201);
}

} // namespace

class TestGroups : public QObject
{
    Q_OBJECT

private slots:
    void newUserHasNone();
    void createdGroupIsGivenBackAndListed();
    void listIsInTheOrderOfCreation();
    void texts_data();
    void texts();
    void namesBecomeOneLine_data();
    void namesBecomeOneLine();
    void rawBodies_data();
    void rawBodies();
    void membersOnly_data();
    void membersOnly();
    void signedInOnly_data();
    void signedInOnly();
    void sameNameMakesAnotherGroup();
    void groupsAreLimited();

private:
    static QJsonObject groupBody(const QJsonValue &name, const QJsonValue &description = u""_s)
    {
        return {{u"name"_s, name}, {u"description"_s, description}};
    }

    const ApiServer server;
    const QByteArray alice = server.signUp(u"alice"_s);
    const QByteArray bob = server.signUp(u"bob"_s);
};

void TestGroups::newUserHasNone()
{
    const HttpReply reply = server.get("/api/groups", server.signUp(u"carol"_s));
    QCOMPARE(reply.status, 200);
    QCOMPARE(reply.body, QByteArray("[]"));
}

void TestGroups::createdGroupIsGivenBackAndListed()
{
    const QByteArray dave = server.signUp(u"dave"_s);
    const HttpReply created = server.post("/api/groups", groupBody(u" Chess\t"_s, u" every week "_s), dave);
    QCOMPARE(created.status, 201);
    const QString id = created.text(u"groupId"_s);
    QVERIFY2(QRegularExpression(u"^[0-9a-f]{32}$"_s).match(id).hasMatch(), qPrintable(id));
    const QJsonObject expected{{u"groupId"_s, id},
                               {u"name"_s, u"Chess"_s},
                               {u"description"_s, u"every week"_s},
                               {u"iconUrl"_s, u""_s}};
    QCOMPARE(created.object(), expected);
    QCOMPARE(server.get("/api/groups", dave).array(), QJsonArray{expected});
    QCOMPARE(server.get("/api/groups/" + id.toLatin1(), dave).object(), expected);
}

void TestGroups::listIsInTheOrderOfCreation()
{
    const QByteArray erin = server.signUp(u"erin"_s);
    const QStringList names{u"zebra"_s, u"ant"_s, u"Moose"_s, u"bee"_s, u"Ant"_s, u"älg"_s, u"1"_s};
    for (const QString &name : names)
        QCOMPARE(server.post("/api/groups", groupBody(name), erin).status, 201);
    for (int i = 0; i < 2; ++i) {
        QStringList listed;
        const QJsonArray groups = server.get("/api/groups", erin).array();
        for (const QJsonValue &group : groups)
            listed << group[u"name"_s].toString();
        QCOMPARE(listed, names);
    }
}

void TestGroups::texts_data()
{
    QTest::addColumn<QJsonValue>("name");
    QTest::addColumn<QJsonValue>("description");
    QTest::addColumn<int>("status");
    addNames();
    addDescriptions();
    addTexts("markup is only text", u"<b>&amp;</b>"_s, u"<script>"_s, 201);
    addTexts("SQL is only text", u"'); DROP TABLE users; --"_s, u"' OR '1'='1"_s, 201);
}

void TestGroups::texts()
{
    QFETCH(QJsonValue, name);
    QFETCH(QJsonValue, description);
    QFETCH(int, status);
    const qsizetype before = server.get("/api/groups", bob).array().size();
    const HttpReply reply = server.post("/api/groups", groupBody(name, description), bob);
    QCOMPARE(reply.status, status);
    const QJsonArray groups = server.get("/api/groups", bob).array();
    QCOMPARE(groups.size(), before + (status == 201 ? 1 : 0));
    if (status == 201) {
        QCOMPARE(groups.last()[u"name"_s].toString(), name.toString().trimmed());
        QCOMPARE(groups.last()[u"description"_s].toString(), description.toString().trimmed());
    } else {
        QVERIFY(!reply.message().isEmpty());
    }
}

void TestGroups::namesBecomeOneLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kept");
    QTest::newRow("line break") << u"a\nb"_s << u"a b"_s;
    QTest::newRow("line break of other systems") << u"a\r\nb"_s << u"a b"_s;
    QTest::newRow("tab") << u"a\tb"_s << u"a b"_s;
    QTest::newRow("several in a row") << u"a \n\t b  c"_s << u"a b c"_s;
    QTest::newRow("separators") << u"a\u2028b\u2029c\u00a0d"_s << u"a b c d"_s;
    QTest::newRow("line breaks behind 32 characters")
        << QString(32, u'a') + QString(50, u'\n') << QString(32, u'a');
    QTest::newRow("32 characters with a blank for many")
        << QString(15, u'a') + QString(50, u'\n') + QString(16, u'b')
        << QString(15, u'a') + u' ' + QString(16, u'b');
}

void TestGroups::namesBecomeOneLine()
{
    QFETCH(QString, name);
    const HttpReply reply = server.post("/api/groups", groupBody(name), bob);
    QCOMPARE(reply.status, 201);
    QTEST(reply.text(u"name"_s), "kept");
    QTEST(server.get("/api/groups", bob).array().last()[u"name"_s].toString(), "kept");
}

void TestGroups::rawBodies_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("invalid UTF-8") << QByteArray("{\"name\":\"a\xff\",\"description\":\"\"}");
    QTest::newRow("UTF-8 cut short") << QByteArray("{\"name\":\"a\xc3\",\"description\":\"\"}");
    QTest::newRow("half a surrogate pair") << QByteArray(R"({"name":"a\ud83d","description":""})");
    QTest::newRow("half a pair as UTF-8") << QByteArray("{\"name\":\"a\xed\xa0\xbd\",\"description\":\"\"}");
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("no JSON") << QByteArray("name=x");
    QTest::newRow("empty") << QByteArray();
}

void TestGroups::rawBodies()
{
    QFETCH(QByteArray, body);
    const HttpReply reply = server.call("POST", "/api/groups", alice, body);
    QCOMPARE(reply.status, 400);
    QVERIFY(!reply.message().isEmpty());
}

void TestGroups::membersOnly_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("group of others") << true;
    QTest::newRow("no group") << false;
}

// The two answers must not differ in anything, or the one would tell that the group is there.
void TestGroups::membersOnly()
{
    QFETCH(bool, exists);
    const QByteArray hers =
        server.post("/api/groups", groupBody(u"hers"_s), alice).text(u"groupId"_s).toLatin1();
    const QByteArray target = "/api/groups/" + (exists ? hers : QByteArray(32, '0'));
    const HttpReply reply = server.get(target, bob);
    QCOMPARE(reply.status, 404);
    QCOMPARE(reply.body, QByteArray("{\"message\":\"There is no such group.\"}"));
    const QJsonArray groups = server.get("/api/groups", bob).array();
    for (const QJsonValue &group : groups)
        QVERIFY(group[u"name"_s].toString() != u"hers"_s);
    QCOMPARE(server.get("/api/groups/" + hers, alice).status, 200);
}

void TestGroups::signedInOnly_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("list") << QByteArray("GET") << QByteArray("/api/groups");
    QTest::newRow("create") << QByteArray("POST") << QByteArray("/api/groups");
    QTest::newRow("one") << QByteArray("GET") << QByteArray("/api/groups/1");
    QTest::newRow("icon") << QByteArray("POST") << QByteArray("/api/groups/1/icon");
    QTest::newRow("avatar") << QByteArray("POST") << QByteArray("/api/profile/avatar/upload");
    QTest::newRow("picture") << QByteArray("GET") << QByteArray("/pictures/1");
}

void TestGroups::signedInOnly()
{
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, target);
    QCOMPARE(server.call(method, target, {}).status, 401);
    QCOMPARE(server.call(method, target, "tideloft_session=forged").status, 401);
}

void TestGroups::sameNameMakesAnotherGroup()
{
    const QString first = server.post("/api/groups", groupBody(u"twin"_s), alice).text(u"groupId"_s);
    const QString second = server.post("/api/groups", groupBody(u"twin"_s), bob).text(u"groupId"_s);
    QVERIFY(!second.isEmpty() && first != second);
    QCOMPARE(server.get("/api/groups/" + first.toLatin1(), bob).status, 404);
}

void TestGroups::groupsAreLimited()
{
    const QByteArray frank = server.signUp(u"frank"_s);
    for (int i = 0; i < tideloft::service::maximumGroups; ++i)
        QCOMPARE(server.post("/api/groups", groupBody(u"g%1"_s.arg(i)), frank).status, 201);
    const HttpReply refused = server.post("/api/groups", groupBody(u"one more"_s), frank);
    QCOMPARE(refused.status, 409);
    QCOMPARE(refused.message(), u"You have too many groups already (100)."_s);
    QCOMPARE(server.get("/api/groups", frank).array().size(), tideloft::service::maximumGroups);
    QCOMPARE(server.post("/api/groups", groupBody(u"of another user"_s), alice).status, 201);
}

TIDELOFT_TEST_MAIN(TestGroups)
#include "tst_group_handlers.moc"
