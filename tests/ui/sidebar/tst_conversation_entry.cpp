// A long list of conversations: what is on screen is there at once, and what is near it soon after.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "tests/ui/sidebar/conversation_window.h"
#include "ui/sidebar/conversation_list.h"

#include <QApplication>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

int widgetCount(const ConversationWindow &window)
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return int(window.list.viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size());
}

} // namespace

class TestConversationEntry : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void onlyWhatIsOnScreenIsThereAtOnce();
    void neighboursFollow_data();
    void neighboursFollow();
    void whatIsScrolledToIsThereAtOnce();
    void farWidgetsAreTakenBack();
    void widgetsThatMovedAwayAreTakenBack();
    void rowIsKeptWhileTheMouseIsDown();
    void screenReaderReadsAnyRow();
    void higherListShowsMore();
    void stoppedWorkGoesOnWithTheNextRows();
    void unchangedRowsKeepTheirWidgets();
};

void TestConversationEntry::onlyWhatIsOnScreenIsThereAtOnce()
{
    Conversations service;
    service.fill(10'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    QCOMPARE(window.list.count(), 10'000);
    QCOMPARE(window.bar()->maximum(), 62 * 10'000 - window.list.viewport()->height());
    QVERIFY2(service.opened <= 9, qPrintable(QString::number(service.opened)));
    QVERIFY(window.hasWidget(0) && window.hasWidget(7));
    QVERIFY(!window.hasWidget(10));
    QVERIFY(!conversations->isSettled());
}

// A computer may need longer than a slice to find out what is left to do.
void TestConversationEntry::neighboursFollow_data()
{
    QTest::addColumn<int>("slice");
    QTest::newRow("slices as usual") << ConversationList::usualSlice;
    QTest::newRow("slices of no time") << 0;
}

void TestConversationEntry::neighboursFollow()
{
    QFETCH(const int, slice);
    Conversations service;
    service.fill(300);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list, slice);
    conversations->show(service.rows());
    QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 60'000);
    QVERIFY(window.hasWidget(15));
    QVERIFY2(service.opened <= 20, qPrintable(QString::number(service.opened)));
    QVERIFY(widgetCount(window) <= 20);
}

void TestConversationEntry::whatIsScrolledToIsThereAtOnce()
{
    Conversations service;
    service.fill(1'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    for (const int value : {30'000, 62'000, 0, 12'345}) {
        window.bar()->setValue(value);
        for (int y = 0; y < window.list.viewport()->height(); y += 10) {
            QListWidgetItem *entry = window.list.itemAt(20, y);
            QVERIFY(entry && window.list.itemWidget(entry));
            QVERIFY(window.list.visualItemRect(entry).contains(window.list.itemWidget(entry)->geometry()));
        }
    }
    QVERIFY(service.opened < 60);
}

void TestConversationEntry::farWidgetsAreTakenBack()
{
    Conversations service;
    service.fill(1'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    for (int value = 0; value < 20'000; value += 1'000) {
        window.bar()->setValue(value);
        QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 60'000);
        QVERIFY2(widgetCount(window) <= 60, qPrintable(QString::number(widgetCount(window))));
    }
    QVERIFY(!window.hasWidget(0));
}

void TestConversationEntry::widgetsThatMovedAwayAreTakenBack()
{
    Conversations service;
    service.fill(1'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    QTRY_VERIFY(conversations->isSettled());
    for (int i = 0; i < 10; ++i)
        service.items.append(service.items.takeAt(0));
    conversations->show(service.rows());
    QTRY_VERIFY(conversations->isSettled());
    QVERIFY(!window.hasWidget(995));
    QVERIFY(window.hasWidget(0));
}

void TestConversationEntry::rowIsKeptWhileTheMouseIsDown()
{
    Conversations service;
    service.fill(1'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    QTest::mousePress(window.list.windowHandle(), Qt::LeftButton, {}, {60, 30});
    window.bar()->setValue(30'000);
    QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 60'000);
    QVERIFY(window.hasWidget(0));
    QTest::mouseRelease(window.list.windowHandle(), Qt::LeftButton, {}, {60, 30});
    window.bar()->setValue(30'010);
    QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 60'000);
    QVERIFY(!window.hasWidget(0));
}

void TestConversationEntry::screenReaderReadsAnyRow()
{
    Conversations service;
    service.fill(5'000);
    service.items.append(
        QJsonObject{{u"peer"_s, u"last"_s}, {u"encrypted"_s, true}, {u"text"_s, u"far away"_s}});
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    const int before = service.opened;
    QCOMPARE(window.spoken(5'000), u"last, far away"_s);
    QCOMPARE(service.opened, before + 1);
    QVERIFY(!window.hasWidget(5'000));
}

void TestConversationEntry::higherListShowsMore()
{
    Conversations service;
    service.fill(1'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    conversations->stop();
    QVERIFY(!window.hasWidget(12));
    window.list.resize(260, 900);
    QVERIFY(window.hasWidget(12));
}

void TestConversationEntry::stoppedWorkGoesOnWithTheNextRows()
{
    Conversations service;
    service.fill(1'000);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    conversations->stop();
    QApplication::processEvents();
    QVERIFY(!window.hasWidget(15));
    conversations->show(service.rows());
    QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 60'000);
    QVERIFY(window.hasWidget(15));
}

void TestConversationEntry::unchangedRowsKeepTheirWidgets()
{
    Conversations service;
    service.fill(100);
    ConversationWindow window;
    auto *conversations = new ConversationList(&window.list);
    conversations->show(service.rows());
    const auto widget = [&](int index) { return QPointer(window.list.itemWidget(window.list.item(index))); };
    const QList<QPointer<QWidget>> before{widget(0), widget(1), widget(2)};
    service.items.prepend(service.items.takeAt(2)); // a new message would change it, too
    QJsonObject changed = service.items.at(1).toObject();
    changed.insert(u"text"_s, u"another message"_s);
    service.items.replace(1, changed);
    conversations->show(service.rows());
    QCOMPARE(widget(0), before.at(2));
    QVERIFY(widget(1) && widget(1) != before.at(0));
    QCOMPARE(widget(2), before.at(1));
}

TIDELOFT_GUI_TEST_MAIN(TestConversationEntry)
#include "tst_conversation_entry.moc"
