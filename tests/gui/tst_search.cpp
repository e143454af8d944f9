// The search for users: what is asked while typing, what is shown of the answers, and what picking one does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QUrlQuery>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray search = QByteArrayLiteral("GET /api/users/search");

QByteArray users(const QStringList &names)
{
    QJsonArray items;
    for (const QString &name : names)
        items.append(QJsonObject{{u"username"_s, name}});
    return json(items);
}

} // namespace

class TestSearch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(chat.signIn()); }
    void init();
    void everyKeystrokeFromTheSecondAsks();
    void queryIsTrimmed();
    void oneLetterAsksNothingAndHidesTheList();
    void returnSearchesForOneLetter();
    void returnOnBlanksAsksNothing();
    void resultsAreShown();
    void unusableEntriesAreSkipped();
    void replyWithoutUsableEntryHidesTheList_data();
    void replyWithoutUsableEntryHidesTheList();
    void failedSearchChangesNothing_data();
    void failedSearchChangesNothing();
    void lateReplyIsShownAsItComes();
    void pickingAResultOpensTheConversation();
    void pickingReadsTheEntrysData();
    void pickingABlankNameDoesNothing();

private:
    QStringList queries() const;
    QStringList shownResults() const;
    bool showResults(const QStringList &names);

    ChatWindow chat;
};

void TestSearch::init()
{
    failOnToolkitWarnings();
    chat.service.answer(search, 200, "[]");
    chat.sideSearch()->clear();
    chat.sideSearch()->setFocus();
    chat.service.clear();
}

QStringList TestSearch::queries() const
{
    QStringList asked;
    for (const RecordedRequest &request : chat.service.requests(search)) {
        const QUrlQuery query(QString::fromLatin1(request.target.split('?').value(1)));
        asked.append(query.queryItemValue(u"q"_s, QUrl::FullyDecoded));
    }
    return asked;
}

QStringList TestSearch::shownResults() const
{
    QStringList texts;
    for (int i = 0; i < chat.searchResults()->count(); ++i)
        texts.append(chat.searchResults()->item(i)->text());
    return texts;
}

bool TestSearch::showResults(const QStringList &names)
{
    chat.service.answer(search, 200, users(names));
    QTest::keyClicks(chat.sideSearch(), u"bo"_s);
    return waitFor([this] { return chat.searchResults()->isVisible(); }, patience());
}

void TestSearch::everyKeystrokeFromTheSecondAsks()
{
    QTest::keyClicks(chat.sideSearch(), u"bobb"_s);
    QVERIFY(chat.service.waitForRequests(search, 3));
    QStringList asked = queries(); // over several connections they may come in any order
    asked.sort();
    QCOMPARE(asked, QStringList({u"bo"_s, u"bob"_s, u"bobb"_s}));
}

void TestSearch::queryIsTrimmed()
{
    QTest::keyClicks(chat.sideSearch(), u" a b "_s);
    QVERIFY(chat.service.waitForRequests(search, 2));
    QCOMPARE(queries(), QStringList({u"a b"_s, u"a b"_s}));
}

void TestSearch::oneLetterAsksNothingAndHidesTheList()
{
    QVERIFY(showResults({u"bob"_s}));
    chat.service.clear();
    QTest::keyClick(chat.sideSearch(), Qt::Key_Backspace);
    QCOMPARE(chat.sideSearch()->text(), u"b"_s);
    QVERIFY(!chat.searchResults()->isVisible());
    QCOMPARE(chat.searchResults()->count(), 0);
    QTest::keyClicks(chat.sideSearch(), u"  "_s);
    QVERIFY(!chat.searchResults()->isVisible());
    chat.refresh();
    QVERIFY(chat.service.waitForRequests("GET /api/chat/conversations", 1));
    QCOMPARE(chat.service.count(search), 0);
}

void TestSearch::returnSearchesForOneLetter()
{
    chat.service.answer(search, 200, users({u"bob"_s}));
    QTest::keyClicks(chat.sideSearch(), u" b"_s);
    QTest::keyClick(chat.sideSearch(), Qt::Key_Return);
    QTRY_VERIFY(chat.searchResults()->isVisible());
    QCOMPARE(queries(), QStringList{u"b"_s});
    QCOMPARE(shownResults(), QStringList{u"👤  bob"_s});
}

void TestSearch::returnOnBlanksAsksNothing()
{
    QTest::keyClicks(chat.sideSearch(), u"   "_s);
    QTest::keyClick(chat.sideSearch(), Qt::Key_Return);
    chat.refresh();
    QVERIFY(chat.service.waitForRequests("GET /api/chat/conversations", 1));
    QCOMPARE(chat.service.count(search), 0);
}

void TestSearch::resultsAreShown()
{
    QVERIFY(showResults({u"bob"_s, u" boris "_s, u"<b>bo</b>"_s}));
    QCOMPARE(shownResults(), QStringList({u"👤  bob"_s, u"👤  boris"_s, u"👤  <b>bo</b>"_s}));
    QCOMPARE(chat.searchResults()->item(1)->data(Qt::UserRole).toString(), u"boris"_s);
    QCOMPARE(chat.searchResults()->maximumHeight(), 180);
}

void TestSearch::unusableEntriesAreSkipped()
{
    chat.service.answer(search, 200, R"([4, "bob", null, {"username":7}, {"username":"  "}, {"name":"x"},
                                         {"username":"bob"}])");
    QTest::keyClicks(chat.sideSearch(), u"bo"_s);
    QTRY_COMPARE(shownResults(), QStringList{u"👤  bob"_s});
}

void TestSearch::replyWithoutUsableEntryHidesTheList_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("nobody found") << QByteArray("[]");
    QTest::newRow("only unusable entries") << QByteArray(R"([1, {"username":" "}])");
    QTest::newRow("an object instead of a list") << QByteArray(R"({"username":"bob"})");
    QTest::newRow("no JSON") << QByteArray("<html>");
    QTest::newRow("empty body") << QByteArray();
}

void TestSearch::replyWithoutUsableEntryHidesTheList()
{
    QFETCH(const QByteArray, body);
    QVERIFY(showResults({u"bob"_s}));
    chat.service.answer(search, 200, body);
    QTest::keyClicks(chat.sideSearch(), u"b"_s);
    QTRY_VERIFY(!chat.searchResults()->isVisible());
    QCOMPARE(chat.searchResults()->count(), 0);
    QCOMPARE(chat.sideSearch()->text(), u"bob"_s);
}

void TestSearch::failedSearchChangesNothing_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("with a message") << 500 << QByteArray(R"({"message":"broken"})");
    QTest::newRow("with a page") << 503 << QByteArray("<html>down</html>");
}

void TestSearch::failedSearchChangesNothing()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QVERIFY(showResults({u"bob"_s}));
    chat.service.answer(search, status, body);
    QTest::keyClicks(chat.sideSearch(), u"bb"_s);
    QVERIFY(chat.service.waitForRequests(search, 3));
    // What is asked for later is answered later.
    const QString later = u"after %1"_s.arg(status);
    chat.service.answer("GET /api/chat/conversations", 200, json({QJsonObject{{u"peer"_s, later}}}));
    chat.refresh();
    QTRY_COMPARE(chat.peers(), QStringList{later});
    QVERIFY(chat.searchResults()->isVisible());
    QCOMPARE(shownResults(), QStringList{u"👤  bob"_s});
    QVERIFY(!QApplication::activeModalWidget());
}

void TestSearch::lateReplyIsShownAsItComes()
{
    // Nothing ties a reply to what stands in the field: the last reply to arrive is what is shown.
    chat.service.answer(search + "?q=ye", 200, users({u"first"_s}));
    chat.service.answer(search + "?q=yet", 200, users({u"second"_s}));
    chat.service.hold(search + "?q=ye");
    QTest::keyClicks(chat.sideSearch(), u"yet"_s);
    QTRY_COMPARE(shownResults(), QStringList{u"👤  second"_s});
    chat.sideSearch()->clear();
    QVERIFY(!chat.searchResults()->isVisible());
    chat.service.release(search + "?q=ye");
    QTRY_COMPARE(shownResults(), QStringList{u"👤  first"_s});
    QVERIFY(chat.searchResults()->isVisible());
}

void TestSearch::pickingAResultOpensTheConversation()
{
    chat.service.answer("GET /api/chat/history/boris", 200, "[]");
    QVERIFY(showResults({u"boa"_s, u"boris"_s}));
    chat.service.clear();
    chat.click(chat.searchResults(), 1);
    QVERIFY(chat.service.waitForRequests("GET /api/chat/history/boris", 1));
    QCOMPARE(chat.service.requests().size(), 1);
    QVERIFY(!chat.searchResults()->isVisible());
    QCOMPARE(chat.searchResults()->count(), 0);
    QCOMPARE(chat.sideSearch()->text(), QString());
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"boris"_s);
    QCOMPARE(chat.child<QLabel>("peerAvatar")->text(), u"BO"_s);
    QVERIFY(chat.msgInput()->isVisible());
    QCOMPARE(QApplication::focusWidget(), chat.msgInput());
}

void TestSearch::pickingReadsTheEntrysData()
{
    QVERIFY(showResults({u"boa"_s}));
    chat.searchResults()->item(0)->setData(Qt::UserRole, u" mallory  "_s);
    chat.click(chat.searchResults(), 0);
    QVERIFY(chat.service.waitForRequests("GET /api/chat/history/mallory", 1));
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"mallory"_s);
}

void TestSearch::pickingABlankNameDoesNothing()
{
    QVERIFY(showResults({u"boa"_s}));
    const QString open = chat.child<QLabel>("centerTitle")->text();
    chat.searchResults()->item(0)->setData(Qt::UserRole, u"  "_s);
    chat.click(chat.searchResults(), 0);
    QVERIFY(chat.searchResults()->isVisible());
    QCOMPARE(chat.sideSearch()->text(), u"bo"_s);
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), open);
}

TIDELOFT_GUI_TEST_MAIN(TestSearch)
#include "tst_search.moc"
