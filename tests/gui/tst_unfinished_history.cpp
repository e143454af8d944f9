// What happens to a long history of which only a part is opened yet: a log-out, another key file, another
// conversation, a new reply, another size of the window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"
#include "tests/support/waiting.h"
#include "ui/chat/history_list.h"

#include <QApplication>
#include <QScrollBar>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

constexpr int messageCount = 900;
const QString closed = u"🔒 Message could not be displayed"_s;
const QString peer = u"bob"_s;

} // namespace

class TestUnfinishedHistory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void logOutLeavesTheRestClosed();
    void anotherKeyIsUsedForAll();
    void anotherConversationTakesItsPlace();
    void newReplyGoesOnWhereTheWorkWas();
    void placeStaysInAWindowOfAnotherSize();

private:
    QJsonArray sealed(const QString &words, int count) const;
    bool begin(int row, qsizetype count);
    bool finish() const;
    void pause() const;
    [[nodiscard]] bool isUnfinished() const { return !history->isSettled(); }
    QStringList spokenTexts() const;
    QString spoken(int index) const;

    std::unique_ptr<ChatWindow> chat;
    tideloft::ui::HistoryList *history = nullptr;
    KeyPair own;
    QJsonArray items;
};

void TestUnfinishedHistory::initTestCase()
{
    own = makeKeyPair();
}

void TestUnfinishedHistory::init()
{
    failOnToolkitWarnings();
    chat = std::make_unique<ChatWindow>();
    history = chat->messageList()->findChild<tideloft::ui::HistoryList *>();
    QVERIFY(tideloft::crypto::writePrivateKeyFile(own.privateKey));
    QVERIFY(chat->signIn());
    items = sealed(u"secret"_s, messageCount);
    QJsonObject plain = items.at(1).toObject();
    plain.insert(u"text"_s, u"secret 1"_s);
    plain.insert(u"encrypted"_s, false);
    items.replace(1, plain);
    chat->service.answer(requests::historyWithBob, 200, json(items));
    QVERIFY(chat->showConversations({QJsonObject{{u"peer"_s, peer}}, QJsonObject{{u"peer"_s, u"eve"_s}}}));
    QVERIFY(begin(0, messageCount));
}

void TestUnfinishedHistory::cleanup()
{
    chat.reset();
}

/// COUNT messages that say WORDS and a number, all on one day.
QJsonArray TestUnfinishedHistory::sealed(const QString &words, int count) const
{
    QJsonArray all;
    const QDateTime time(QDate(2021, 3, 7), QTime(8, 0));
    for (int i = 0; i < count; ++i) {
        QJsonObject item = sealedMessage(peer, u"%1 %2"_s.arg(words).arg(i), own, chat->deviceId());
        item.insert(u"createdAt"_s, time.addSecs(i * 10).toString(Qt::ISODate));
        all.append(item);
    }
    return all;
}

/// Opens the conversation in ROW. True once COUNT messages are listed, and not all of them opened.
bool TestUnfinishedHistory::begin(int row, qsizetype count)
{
    ChatWindow::click(chat->dmList(), row);
    return waitFor([&] { return chat->messageList()->count() == count + 1; }) && isUnfinished();
}

bool TestUnfinishedHistory::finish() const
{
    return waitFor([this] { return history->isSettled(); }, 12 * patience());
}

/// Nothing goes on until the next reply, however long the service takes to give it.
void TestUnfinishedHistory::pause() const
{
    history->stop();
}

QString TestUnfinishedHistory::spoken(int index) const
{
    return chat->messageList()->item(index)->data(Qt::AccessibleTextRole).toString();
}

/// What a screen reader says of each message.
QStringList TestUnfinishedHistory::spokenTexts() const
{
    QStringList texts;
    for (int i = 1; i < chat->messageList()->count(); ++i)
        texts.append(spoken(i));
    return texts;
}

void TestUnfinishedHistory::logOutLeavesTheRestClosed()
{
    chat->window.logOut();
    QVERIFY(!isUnfinished());
    QApplication::processEvents();
    const QStringList texts = spokenTexts();
    QVERIFY2(texts.first().contains(closed), qPrintable(texts.first()));
    QVERIFY2(texts.at(1).contains(u"secret 1"_s), qPrintable(texts.at(1))); // it was never sealed
    QVERIFY2(texts.last().contains(u"secret 899"_s), qPrintable(texts.last()));
    QVERIFY(texts.filter(u"secret"_s).size() < messageCount / 2);

    chat->service.clear(); // the second sign-in is waited for, too
    QVERIFY(chat->signIn());
    QVERIFY(chat->open(peer, items)); // and who comes back reads all again
    QVERIFY(finish());
    QCOMPARE(spokenTexts().filter(u"secret"_s).size(), messageCount);
}

void TestUnfinishedHistory::anotherKeyIsUsedForAll()
{
    pause();
    const KeyPair other = makeKeyPair();
    QVERIFY(other.privateKey != own.privateKey);
    const qsizetype before = chat->service.count(requests::historyWithBob);
    chat->refresh();
    QVERIFY(chat->service.waitForRequests(requests::historyWithBob, before + 1));
    QTRY_VERIFY(spoken(messageCount).contains(closed)); // it was open already
    QVERIFY(tideloft::crypto::writePrivateKeyFile(own.privateKey));
    QVERIFY(isUnfinished());
    QVERIFY(chat->showHistory(peer, items));
    QVERIFY(finish());
    QCOMPARE(spokenTexts().filter(u"secret"_s).size(), messageCount);
}

void TestUnfinishedHistory::anotherConversationTakesItsPlace()
{
    const QJsonArray others = sealed(u"other"_s, 300);
    chat->service.answer("GET /api/chat/history/eve", 200, json(others));
    QVERIFY(isUnfinished());
    QVERIFY(begin(1, others.size()));
    QVERIFY(finish());
    QCOMPARE(spokenTexts().filter(u"other"_s).size(), others.size());
    QVERIFY(begin(0, messageCount));
    QVERIFY(finish());
    QCOMPARE(spokenTexts().filter(u"secret"_s).size(), messageCount);
}

void TestUnfinishedHistory::newReplyGoesOnWhereTheWorkWas()
{
    pause();
    QJsonObject added = items.last().toObject();
    added.insert(u"text"_s, u"not sealed"_s);
    added.insert(u"encrypted"_s, false);
    items.append(added);
    chat->service.answer(requests::historyWithBob, 200, json(items));
    chat->refresh();
    QTRY_COMPARE(chat->messageList()->count(), messageCount + 2);
    QVERIFY(isUnfinished());
    const ShownMessage shown = shownMessage(chat->messageList(), messageCount + 1);
    QCOMPARE(shown.text->text(), u"not sealed"_s);
    QVERIFY(!shown.text->visibleRegion().isEmpty());
    QVERIFY(finish());
    QCOMPARE(spokenTexts().filter(u"secret"_s).size(), messageCount);
}

void TestUnfinishedHistory::placeStaysInAWindowOfAnotherSize()
{
    const QListWidget *list = chat->messageList();
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() / 3);
    QVERIFY(isUnfinished());
    const QListWidgetItem *top = list->itemAt(20, 0);
    chat->window.resize(chat->window.width() + 230, chat->window.height());
    QApplication::processEvents();
    QVERIFY(isUnfinished());
    QCOMPARE(list->itemAt(20, 0), top);
    QVERIFY(finish());
    QCOMPARE(list->itemAt(20, 0), top);
    for (int y = 0; y < list->viewport()->height(); y += 10) {
        QListWidgetItem *entry = list->itemAt(20, y);
        QVERIFY(entry);
        QCOMPARE(entry->sizeHint(), list->itemWidget(entry)->sizeHint());
    }
}

TIDELOFT_GUI_TEST_MAIN(TestUnfinishedHistory)
#include "tst_unfinished_history.moc"
