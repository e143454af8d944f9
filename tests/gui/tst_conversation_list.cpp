// The conversation list: which items get a row, what it says, and what a click does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/midnight.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

QString atNoon(QDate day)
{
    return day.startOfDay().addSecs(12 * 3600).toUTC().toString(Qt::ISODate);
}

} // namespace

class TestConversationList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        stayAwayFromMidnight();
        QVERIFY(chat.signIn());
    }
    void init() { failOnToolkitWarnings(); }
    void itemWithoutPeerHasNoRow();
    void orderIsTheServices();
    void everyReplyIsListedAnew();
    void previewSays_data();
    void previewSays();
    void sealedPreviewIsOpened();
    void longPreviewIsCutAt140Pixels();
    void timeShows_data();
    void timeShows();
    void failedRequestKeepsTheList_data();
    void failedRequestKeepsTheList();
    void clickOpensByTheEntrysData();
    void clickOnBlankNameDoesNothing();

private:
    ChatWindow chat;
};

void TestConversationList::itemWithoutPeerHasNoRow()
{
    const QJsonObject bob{{u"peer"_s, u"bob"_s}};
    QVERIFY(chat.showConversations({QJsonObject{{u"text"_s, u"lost"_s}}, QJsonObject{{u"peer"_s, u"   "_s}},
                                    QJsonObject{{u"peer"_s, 7}}, 42, u"carol"_s, QJsonValue(), bob}));
    QCOMPARE(chat.peers(), QStringList{u"bob"_s});
}

void TestConversationList::orderIsTheServices()
{
    const QStringList names{u"zoe"_s, u"adam"_s, u"Mia"_s, u"adam"_s};
    QJsonArray items;
    for (const QString &name : names)
        items.append(QJsonObject{{u"peer"_s, name}});
    QVERIFY(chat.showConversations(items));
    QCOMPARE(chat.peers(), names);
}

void TestConversationList::everyReplyIsListedAnew()
{
    const auto item = [](const QString &peer, const QString &text) {
        return QJsonObject{{u"peer"_s, peer}, {u"text"_s, text}};
    };
    QVERIFY(chat.showConversations({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"1"_s)}));
    const QPointer<QWidget> bob = chat.dmList()->itemWidget(chat.dmList()->item(0));
    const QPointer<QWidget> eve = chat.dmList()->itemWidget(chat.dmList()->item(1));
    chat.dmList()->setCurrentRow(1);
    QVERIFY(chat.showConversations({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"2"_s)}));
    QCOMPARE(chat.peers(), QStringList({u"bob"_s, u"eve"_s}));
    QVERIFY(bob); // it says what it said
    QTRY_VERIFY(!eve);
    QCOMPARE(shownConversation(chat.dmList(), 1).preview->text(), u"2"_s);
    QVERIFY(chat.dmList()->selectedItems().isEmpty());
    QVERIFY(chat.showConversations({}));
    QCOMPARE(chat.dmList()->count(), 0);
    QTRY_VERIFY(!bob);
}

void TestConversationList::previewSays_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QJsonValue>("encrypted");
    QTest::addColumn<QString>("preview");
    const QString english = u"🔒 Encrypted message"_s;
    QTest::newRow("encrypted item that cannot be opened, English") << 1 << QJsonValue(true) << english;
    QTest::newRow("encrypted item that cannot be opened, Swedish")
        << 0 << QJsonValue(true) << u"🔒 Krypterat meddelande"_s;
    QTest::newRow("marked by the number 1") << 1 << QJsonValue(1) << english;
    QTest::newRow("not encrypted") << 1 << QJsonValue(false) << u"abc"_s;
    QTest::newRow("the text true is no mark") << 1 << QJsonValue(u"true"_s) << u"abc"_s;
    QTest::newRow("the number 0 is no mark") << 1 << QJsonValue(0) << u"abc"_s;
}

void TestConversationList::previewSays()
{
    QFETCH(const int, language);
    QFETCH(const QJsonValue, encrypted);
    QFETCH(const QString, preview);
    chat.window.setLanguageIndex(language);
    QVERIFY(chat.showConversations(
        {QJsonObject{{u"peer"_s, u"bob"_s}, {u"text"_s, u"abc"_s}, {u"encrypted"_s, encrypted}}}));
    chat.window.setLanguageIndex(1);
    QCOMPARE(shownConversation(chat.dmList(), 0).preview->text(), preview);
}

void TestConversationList::sealedPreviewIsOpened()
{
    const KeyPair own = ownKeyPair();
    QJsonObject theirs = sealedMessage(u"bob"_s, u"Hej på dig"_s, own, chat.deviceId());
    QJsonObject mine = sealedMessage(u"Alice"_s, u"from me"_s, own, chat.deviceId(), true);
    theirs.insert(u"peer"_s, u"bob"_s);
    mine.insert(u"peer"_s, u"eve"_s);
    QVERIFY(chat.showConversations({theirs, mine}));
    QCOMPARE(shownConversation(chat.dmList(), 0).preview->text(), u"Hej på dig"_s);
    QCOMPARE(shownConversation(chat.dmList(), 1).preview->text(), u"from me"_s);
}

void TestConversationList::longPreviewIsCutAt140Pixels()
{
    const QString text = u"word and "_s.repeated(34).left(300);
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}, {u"text"_s, text}}}));
    const QLabel *label = shownConversation(chat.dmList(), 0).preview;
    QVERIFY(label->text().endsWith(u"…"_s));
    QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= 140);
    QCOMPARE(label->text(), label->fontMetrics().elidedText(text, Qt::ElideRight, 140));
    QVERIFY(label->text().chopped(1).size() > 10 && text.startsWith(label->text().chopped(1)));
}

void TestConversationList::timeShows_data()
{
    QTest::addColumn<QJsonValue>("createdAt");
    QTest::addColumn<QString>("time");
    const QDate today = QDate::currentDate();
    const auto day = [](QDate date) { return QLocale().toString(date, u"d MMM"_s); };
    QTest::newRow("today: hours and minutes") << QJsonValue(atNoon(today)) << u"12:00"_s;
    QTest::newRow("yesterday: day and month")
        << QJsonValue(atNoon(today.addDays(-1))) << day(today.addDays(-1));
    QTest::newRow("long ago: day and month")
        << QJsonValue(u"2021-03-07T12:00:00.000Z"_s) << day(QDate(2021, 3, 7));
    QTest::newRow("no date can be read") << QJsonValue(u"soon"_s) << QString();
    QTest::newRow("a number") << QJsonValue(5) << QString();
    QTest::newRow("without createdAt") << QJsonValue(QJsonValue::Undefined) << QString();
}

void TestConversationList::timeShows()
{
    QFETCH(const QJsonValue, createdAt);
    QFETCH(const QString, time);
    QJsonObject item{{u"peer"_s, u"bob"_s}};
    item.insert(u"createdAt"_s, createdAt);
    QVERIFY(chat.showConversations({item}));
    QCOMPARE(shownConversation(chat.dmList(), 0).time->text(), time);
}

void TestConversationList::failedRequestKeepsTheList_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("refused") << 500 << QByteArray(R"({"message":"no"})");
    QTest::newRow("signed out") << 401 << QByteArray("<html>login</html>");
}

void TestConversationList::failedRequestKeepsTheList()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}}}));
    chat.service.answerOnce("GET /api/chat/conversations", status, body);
    chat.refresh();
    QVERIFY(chat.settle());
    QCOMPARE(chat.peers(), QStringList{u"bob"_s});
    QVERIFY(!QApplication::activeModalWidget());
}

void TestConversationList::clickOpensByTheEntrysData()
{
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}}, QJsonObject{{u"peer"_s, u"eve"_s}}}));
    chat.dmList()->item(1)->setData(Qt::UserRole, u"  mallory "_s);
    chat.click(chat.dmList(), 1);
    QVERIFY(chat.service.waitForRequests("GET /api/chat/history/mallory", 1));
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"mallory"_s);
    QVERIFY(chat.msgInput()->isVisible());
    QCOMPARE(chat.service.count("GET /api/chat/history/eve"), 0);
}

void TestConversationList::clickOnBlankNameDoesNothing()
{
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}}}));
    const QString open = chat.child<QLabel>("centerTitle")->text();
    chat.dmList()->item(0)->setData(Qt::UserRole, u"   "_s);
    chat.service.clear();
    chat.click(chat.dmList(), 0);
    QVERIFY(chat.settle());
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), open);
    QCOMPARE(chat.service.requests().size(), 1); // the search that settles
}

TIDELOFT_GUI_TEST_MAIN(TestConversationList)
#include "tst_conversation_list.moc"
