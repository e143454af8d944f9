// What a refresh leaves alone: the text that the user has selected, an open menu, a selection in the making.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

QJsonObject message(const QString &from, const QString &text, int minute)
{
    return plainMessage(from, text, u"2021-03-07T12:%1:00.000Z"_s.arg(minute, 2, 10, QChar(u'0')));
}

} // namespace

class TestChatRefresh : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void selectionSurvives_data();
    void selectionSurvives();
    void selectionGoesWithItsMessage();
    void selectionDoesNotReachAnotherConversation();
    void openMenuStaysOpen();
    void selectionWithTheMouseGoesOn();
    void mouseMayStillBeDownWhenItsMessageGoes();
    void noRowIsLeftOver();
    void noticeOfAServerGivesWayToTheHistory();
    void failedRequestKeepsTheConversations_data();
    void failedRequestKeepsTheConversations();
    void clickAsksForTheHistoryOfTheEntry();

private:
    QLabel *selectWord(int index);
    QLabel *text(int index) const { return shownMessage(chat.messageList(), index).text; }
    qsizetype widgetsShown() const;

    ChatWindow chat;
    const QJsonArray items{message(u"alice"_s, u"first words"_s, 0),
                           message(u"bob"_s, u"second words"_s, 20)};
};

void TestChatRefresh::initTestCase()
{
    failOnToolkitWarnings();
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
}

void TestChatRefresh::init()
{
    failOnToolkitWarnings();
    QVERIFY(chat.showHistory(u"bob"_s, {}));
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QCOMPARE(chat.messageList()->count(), 3);
}

/// Selects the word below the mouse as a person does; returns its label.
QLabel *TestChatRefresh::selectWord(int index)
{
    QApplication::processEvents();
    QLabel *label = text(index);
    QTest::mouseDClick(label, Qt::LeftButton, {}, QPoint(4, label->height() / 2));
    return label;
}

qsizetype TestChatRefresh::widgetsShown() const
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return chat.messageList()->viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size();
}

void TestChatRefresh::selectionSurvives_data()
{
    QTest::addColumn<QJsonArray>("after");
    const QJsonValue one = items.at(0);
    const QJsonValue two = items.at(1);
    QJsonArray many{one, two};
    for (int i = 0; i < 59; ++i)
        many.insert(0, message(i % 2 ? u"bob"_s : u"alice"_s, u"before"_s, i));
    QTest::newRow("nothing new") << items;
    QTest::newRow("a message more at the end") << QJsonArray{one, two, message(u"alice"_s, u"third"_s, 30)};
    QTest::newRow("a message more in front") << QJsonArray{message(u"alice"_s, u"zero"_s, 0), one, two};
    QTest::newRow("a message more between") << QJsonArray{one, message(u"alice"_s, u"half"_s, 10), two};
    QTest::newRow("the other message gone") << QJsonArray{two};
    QTest::newRow("the other message changed") << QJsonArray{message(u"bob"_s, u"changed"_s, 0), two};
    QTest::newRow("in another order") << QJsonArray{two, one};
    QTest::newRow("very many more in front") << many;
}

void TestChatRefresh::selectionSurvives()
{
    QFETCH(const QJsonArray, after);
    const QPointer<QLabel> label = selectWord(2);
    QCOMPARE(label->selectedText(), u"second"_s);
    QVERIFY(chat.showHistory(u"bob"_s, after));
    QVERIFY(label);
    QCOMPARE(label->selectedText(), u"second"_s);
    QVERIFY(label->isVisible());
}

void TestChatRefresh::selectionGoesWithItsMessage()
{
    selectWord(2);
    QVERIFY(chat.showHistory(u"bob"_s, {items.at(0), message(u"bob"_s, u"second wording"_s, 20)}));
    QCOMPARE(text(2)->text(), u"second wording"_s);
    QVERIFY(!text(2)->hasSelectedText());
}

void TestChatRefresh::selectionDoesNotReachAnotherConversation()
{
    const QPointer<QLabel> label = selectWord(2);
    QVERIFY(chat.open(u"eve"_s, items));
    QCOMPARE(text(2)->text(), u"second words"_s);
    QVERIFY(!text(2)->hasSelectedText());
    QTRY_VERIFY(!label);
    QVERIFY(chat.open(u"bob"_s, items));
}

void TestChatRefresh::openMenuStaysOpen()
{
    const QLabel *label = selectWord(2);
    const auto *footer = chat.child<QWidget>("sideFooter");
    bool staysOpen = false;
    const bool opened = withMenu(
        [footer] {
            press(footer, {footer->width() - 5, 5});
        },
        [&](const QMenu *menu) {
            const bool shown = chat.showHistory(u"bob"_s, {message(u"bob"_s, u"changed"_s, 0), items.at(1)});
            staysOpen = shown && menu->isVisible();
        });
    QVERIFY(opened && staysOpen);
    QCOMPARE(text(1)->text(), u"changed"_s);
    QCOMPARE(label, text(2));
    QCOMPARE(widgetsShown(), 3);
}

void TestChatRefresh::selectionWithTheMouseGoesOn()
{
    QApplication::processEvents();
    QLabel *label = text(2);
    QTest::mousePress(label, Qt::LeftButton, {}, QPoint(0, label->height() / 2));
    QTest::mouseMove(label, QPoint(20, label->height() / 2));
    QVERIFY(chat.showHistory(u"bob"_s, {items.at(0), items.at(1), message(u"alice"_s, u"third"_s, 30)}));
    const QPoint end(label->width(), label->height() / 2);
    QMouseEvent drag(QEvent::MouseMove, end, label->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(label, &drag);
    QTest::mouseRelease(label, Qt::LeftButton, {}, end);
    QCOMPARE(label->selectedText(), u"second words"_s);
}

void TestChatRefresh::mouseMayStillBeDownWhenItsMessageGoes()
{
    QApplication::processEvents();
    const QPointer<QLabel> label = text(2);
    QWindow *screen = chat.window.windowHandle();
    const QPoint spot = label->mapTo(&chat.window, QPoint(4, label->height() / 2));
    QTest::mousePress(screen, Qt::LeftButton, {}, spot);
    QVERIFY(chat.showHistory(u"bob"_s, {items.at(0)}));
    QTRY_VERIFY(!label);
    QTest::mouseMove(screen, spot + QPoint(30, 0));
    QTest::mouseRelease(screen, Qt::LeftButton, {}, spot + QPoint(30, 0));
    QCOMPARE(chat.messageList()->count(), 2);
}

void TestChatRefresh::noRowIsLeftOver()
{
    QCOMPARE(widgetsShown(), 3);
    for (int i = 0; i < 20; ++i) {
        QVERIFY(chat.showHistory(u"bob"_s, {items.at(i % 2), message(u"bob"_s, QString::number(i), 40)}));
        QCOMPARE(widgetsShown(), 3);
        QCOMPARE(chat.messageList()->count(), 3);
    }
    QVERIFY(chat.showHistory(u"bob"_s, {}));
    QCOMPARE(widgetsShown(), 0);
}

void TestChatRefresh::noticeOfAServerGivesWayToTheHistory()
{
    const QStringList shown = shownHistory(chat.messageList());
    QMetaObject::invokeMethod(
        &chat.window, "onServersLoaded",
        Q_ARG(QJsonArray, (QJsonArray{QJsonObject{{u"groupId"_s, u"g1"_s}, {u"name"_s, u"Reef"_s}}})));
    QPushButton *server = nullptr;
    for (auto *button : chat.window.findChildren<QPushButton *>()) {
        if (button->toolTip() == u"Reef")
            server = button;
    }
    QVERIFY(server);
    QTest::mouseClick(server, Qt::LeftButton);
    QCOMPARE(chat.messageList()->count(), 1);
    QVERIFY(chat.open(u"bob"_s, items));
    QCOMPARE(shownHistory(chat.messageList()), shown);
    QCOMPARE(widgetsShown(), 3);
}

void TestChatRefresh::failedRequestKeepsTheConversations_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("refused") << 500 << QByteArray(R"({"message":"no"})");
    QTest::newRow("signed out") << 401 << QByteArray("<html>login</html>");
}

void TestChatRefresh::failedRequestKeepsTheConversations()
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

// The name comes from the entry's data, and its history is the one that is asked for.
void TestChatRefresh::clickAsksForTheHistoryOfTheEntry()
{
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}}, QJsonObject{{u"peer"_s, u"eve"_s}}}));
    chat.dmList()->item(1)->setData(Qt::UserRole, u"  mallory "_s);
    chat.service.clear();
    chat.click(chat.dmList(), 1);
    QVERIFY(chat.service.waitForRequests("GET /api/chat/history/mallory", 1));
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"mallory"_s);
    QVERIFY(chat.msgInput()->isVisible());
    QCOMPARE(chat.service.count("GET /api/chat/history/eve"), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestChatRefresh)
#include "tst_chat_refresh.moc"
