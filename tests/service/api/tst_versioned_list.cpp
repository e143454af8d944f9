// Lists with entity tags: what has not changed is answered with 304, and nothing is ever outdated.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/entity_tag.h"
#include "tests/service/api_fixture.h"
#include "tests/service/message_bodies.h"
#include "tests/service/picture_material.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestVersionedList : public QObject
{
    Q_OBJECT

private slots:
    void tags_data();
    void tags();
    void noTagWithoutVersion();
    void unchangedListsAreNotSentAgain_data();
    void unchangedListsAreNotSentAgain();
    void unchangedIsAnsweredFromMemory();
    void historyChangesOnBothSides();
    void groupsChangeWithTheirIcons();
    void tagsOfOneUserAreNobodyElses();
    void tagsSurviveARestart();
    void limitBelongsToTheTag();
    void nobodyIsToldAnythingAfterSigningOut();
    void historyGivesTheNewest();
};

namespace
{

Response ask(const ApiFixture &fixture, const Api &api, const QByteArray &target, const QByteArray &cookie,
             const QByteArray &tag)
{
    Q_UNUSED(fixture)
    return ApiFixture::finish(api.handle({"GET", target, {}, cookie, {}, {}, tag}));
}

Response ask(const ApiFixture &fixture, const QByteArray &target, const QByteArray &cookie,
             const QByteArray &tag = {})
{
    return ask(fixture, fixture.api, target, cookie, tag);
}

QByteArray tagOf(const Response &response)
{
    for (const auto &[name, value] : response.headers) {
        if (name == "ETag")
            return value;
    }
    return {};
}

} // namespace

void TestVersionedList::tags_data()
{
    QTest::addColumn<QByteArray>("ifNoneMatch");
    QTest::addColumn<bool>("named");
    QTest::newRow("none") << QByteArray() << false;
    const QByteArray tag = entityTag(10, 2);
    QTest::newRow("the same") << tag << true;
    QTest::newRow("of a longer list") << entityTag(10, 3) << false;
    QTest::newRow("of another version") << entityTag(11, 2) << false;
    QTest::newRow("without quotes") << tag.sliced(1).chopped(1) << false;
    QTest::newRow("weak") << "W/" + tag << true;
    QTest::newRow("one of two") << "\"x\", " + tag << true;
    QTest::newRow("any") << QByteArray("*") << true;
}

void TestVersionedList::tags()
{
    QFETCH(QByteArray, ifNoneMatch);
    const QRegularExpression form(u"^\"[A-Za-z0-9_-]{11}\"$"_s);
    QVERIFY(form.match(QString::fromLatin1(entityTag(10, 2))).hasMatch());
    QTEST(namesTag(ifNoneMatch, entityTag(10, 2)), "named");
}

void TestVersionedList::noTagWithoutVersion()
{
    QCOMPARE(entityTag(0, 2), QByteArray());
    QVERIFY(!namesTag("*", {}));
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const Response stranger = ask(fixture, "/api/chat/history/bob", alice, "*");
    QCOMPARE(stranger.status, 200);
    QCOMPARE(stranger.body, QByteArray("[]"));
    QCOMPARE(tagOf(stranger), QByteArray());
}

void TestVersionedList::unchangedListsAreNotSentAgain_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("conversations") << QByteArray("/api/chat/conversations");
    QTest::newRow("history") << QByteArray("/api/chat/history/bob");
    QTest::newRow("history in another spelling") << QByteArray("/api/chat/history/%20BOB");
    QTest::newRow("servers") << QByteArray("/api/groups");
}

void TestVersionedList::unchangedListsAreNotSentAgain()
{
    QFETCH(QByteArray, target);
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    const auto change = [&] {
        QCOMPARE(fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"hej"_s), alice).status, 201);
        QCOMPARE(fixture.post("/api/groups", {{u"name"_s, u"g"_s}, {u"description"_s, u""_s}}, alice).status,
                 201);
    };
    change();
    const Response first = ask(fixture, target, alice);
    QCOMPARE(first.status, 200);
    const QByteArray tag = tagOf(first);
    QVERIFY(tag.startsWith('"') && tag.endsWith('"'));
    const Response unchanged = ask(fixture, target, alice, tag);
    QCOMPARE(unchanged.status, 304);
    QCOMPARE(unchanged.body, QByteArray());
    QCOMPARE(tagOf(unchanged), tag);
    QVERIFY(!unchanged.route.isEmpty());
    QCOMPARE(ask(fixture, target, alice, "\"other\"").body, first.body);
    fixture.now = fixture.now.addSecs(1);
    change();
    const Response changed = ask(fixture, target, alice, tag);
    QCOMPARE(changed.status, 200);
    QVERIFY(changed.body != first.body);
    QVERIFY(tagOf(changed) != tag);
}

// A reply that comes at once has asked no thread. Nothing is kept in memory of a database that others change.
void TestVersionedList::unchangedIsAnsweredFromMemory()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray tag = tagOf(ask(fixture, "/api/groups", alice));
    const Request request{"GET", "/api/groups", {}, alice, {}, {}, tag};
    QCOMPARE(std::holds_alternative<Response>(fixture.api.handle(request)), !ChosenStorage::isPostgresql());
    QCOMPARE(ApiFixture::finish(fixture.api.handle(request)).status, 304);
}

void TestVersionedList::historyChangesOnBothSides()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"1"_s), alice);
    const QByteArray ofAlice = tagOf(ask(fixture, "/api/chat/history/bob", alice));
    const QByteArray ofBob = tagOf(ask(fixture, "/api/chat/history/alice", bob));
    QVERIFY(ofAlice != ofBob);
    fixture.post("/api/chat/send", plainMessage(u"alice"_s, u"2"_s), bob);
    QCOMPARE(ApiFixture::array(ask(fixture, "/api/chat/history/bob", alice, ofAlice)).size(), 2);
    QCOMPARE(ApiFixture::array(ask(fixture, "/api/chat/history/alice", bob, ofBob)).size(), 2);
}

void TestVersionedList::groupsChangeWithTheirIcons()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const Response made =
        fixture.post("/api/groups", {{u"name"_s, u"g"_s}, {u"description"_s, u""_s}}, alice);
    const QByteArray id = ApiFixture::object(made).value(u"groupId"_s).toString().toLatin1();
    const QByteArray tag = tagOf(ask(fixture, "/api/groups", alice));
    const Response upload = ApiFixture::finish(fixture.api.handle(
        {"POST", "/api/groups/" + id + "/icon", formType, alice, form(filePart("icon", png()))}));
    QCOMPARE(upload.status, 200);
    QCOMPARE(ask(fixture, "/api/groups", alice, tag).status, 200);
}

void TestVersionedList::tagsOfOneUserAreNobodyElses()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    fixture.post("/api/chat/send", plainMessage(u"bob"_s, u"1"_s), alice);
    const QByteArray tag = tagOf(ask(fixture, "/api/chat/conversations", alice));
    QCOMPARE(ask(fixture, "/api/chat/conversations", bob, tag).status, 200);
}

void TestVersionedList::tagsSurviveARestart()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.post("/api/chat/send", plainMessage(u"alice"_s, u"1"_s), alice);
    const QByteArray tag = tagOf(ask(fixture, "/api/chat/history/alice", alice));
    ApiSettings settings;
    settings.now = [&] { return fixture.now; };
    const Api restarted({fixture.place()}, settings);
    QCOMPARE(ask(fixture, restarted, "/api/chat/history/alice", alice, tag).status, 304);
}

void TestVersionedList::limitBelongsToTheTag()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    fixture.post("/api/chat/send", plainMessage(u"alice"_s, u"1"_s), alice);
    const QByteArray tag = tagOf(ask(fixture, "/api/chat/history/alice", alice));
    ApiSettings settings;
    settings.now = [&] { return fixture.now; };
    settings.historyLimit = 4;
    const Api restarted({fixture.place()}, settings);
    QCOMPARE(ask(fixture, restarted, "/api/chat/history/alice", alice, tag).status, 200);
}

void TestVersionedList::nobodyIsToldAnythingAfterSigningOut()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray tag = tagOf(ask(fixture, "/api/groups", alice));
    QCOMPARE(ask(fixture, "/api/groups", alice, tag).status, 304);
    QCOMPARE(ask(fixture, "/api/groups", {}, tag).status, 401);
    fixture.call("POST", "/api/auth/logout", {}, alice);
    QCOMPARE(ask(fixture, "/api/groups", alice, tag).status, 401);
    const QByteArray again = fixture.signUp(u"alice"_s);
    QCOMPARE(ask(fixture, "/api/groups", again, tag).status, 304);
    fixture.now = fixture.now.addDays(1);
    QCOMPARE(ask(fixture, "/api/groups", again, tag).status, 401);
}

void TestVersionedList::historyGivesTheNewest()
{
    ApiFixture fixture;
    const QByteArray alice = fixture.signUp(u"alice"_s);
    for (int i = 1; i <= 5; ++i)
        fixture.post("/api/chat/send", plainMessage(u"alice"_s, QString::number(i)), alice);
    ApiSettings settings;
    settings.now = [&] { return fixture.now; };
    settings.historyLimit = 3;
    const Api limited({fixture.place()}, settings);
    const QJsonArray items = ApiFixture::array(ask(fixture, limited, "/api/chat/history/alice", alice, {}));
    QCOMPARE(items.size(), 3);
    QCOMPARE(items[0][u"text"_s].toString(), u"3"_s);
    QCOMPARE(items[2][u"text"_s].toString(), u"5"_s);
}

TIDELOFT_TEST_MAIN(TestVersionedList)
#include "tst_versioned_list.moc"
