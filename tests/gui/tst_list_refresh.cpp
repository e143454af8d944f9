// Lists that touch only what differs, beside lists that are cleared and filled one row at a time: after every
// change both look the same.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_changing_chat.h"
#include "tests/gui/tst_list_state.h"
#include "tests/support/eager_history.h"
#include "tests/support/test_main.h"
#include "ui/chat/history_list.h"
#include "ui/lists/row_list.h"
#include "ui/messages/spoken_text.h"
#include "ui/sidebar/conversation_list.h"
#include "ui/sidebar/conversation_row.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QListWidget>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using namespace tideloft::tests;

namespace
{

struct ListWindow {
    explicit ListWindow(const QString &name)
    {
        list.setObjectName(name);
        list.setStyleSheet(darkStyleSheet());
        list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        if (name == u"messageList"_s) {
            list.setWordWrap(true); // lays out anew when the width changes
            list.setSelectionMode(QAbstractItemView::NoSelection);
            list.setFocusPolicy(Qt::NoFocus);
        }
        list.resize(500, 320);
        list.show();
        settleWidgets();
    }

    QListWidget list;
};

/// Clears LIST and fills it: every entry and every widget is new.
void refill(QListWidget *list, const QList<ListRow> &rows)
{
    list->clear();
    for (const ListRow &row : rows) {
        auto *entry = new QListWidgetItem(list);
        entry->setFlags(row.flags);
        entry->setSizeHint(row.sizeHint);
        if (!row.user.isEmpty())
            entry->setData(Qt::UserRole, row.user);
        if (!row.spoken.isEmpty())
            entry->setData(Qt::AccessibleTextRole, row.spoken);
    }
    for (int i = 0; i < rows.size(); ++i)
        list->setItemWidget(list->item(i), rows.at(i).widget);
}

/// The two ways of showing a history, side by side.
struct HistoryWindows {
    HistoryWindows()
    {
        for (ListWindow *window : {&refreshed, &rebuilt})
            window->list.resize(501, 320); // what watches a list learns its width
        settleWidgets();
    }

    void show(const QList<HistoryRow> &models)
    {
        refreshedHistory->show(models);
        rebuilt.list.clear();
        rebuiltHistory->show(models);
        settle();
    }
    void settle() const
    {
        settleWidgets();
        QTRY_VERIFY(refreshedHistory->isSettled());
        settleWidgets();
    }

    ListWindow refreshed{u"messageList"_s};
    ListWindow rebuilt{u"messageList"_s};
    HistoryList *refreshedHistory = new HistoryList(&refreshed.list);
    EagerHistory *rebuiltHistory = new EagerHistory(&rebuilt.list);
};

void rebuildConversations(QListWidget *list, const QList<ConversationRowModel> &models)
{
    const QString current =
        list->currentItem() ? list->currentItem()->data(Qt::UserRole).toString() : QString();
    QList<ListRow> rows;
    for (const ConversationRowModel &model : models)
        rows.append({.widget = makeConversationRow(model, list->viewport()),
                     .flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled,
                     .sizeHint = QSize(0, 62),
                     .user = model.peer,
                     .spoken = spokenText(model)});
    refill(list, rows);
    list->setAutoScroll(false); // who has scrolled away from it is not drawn back
    for (int i = 0; i < list->count() && !current.isEmpty(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() == current) {
            list->setCurrentRow(i, QItemSelectionModel::NoUpdate);
            break;
        }
    }
    list->setAutoScroll(true);
}

} // namespace

class TestListRefresh : public QObject
{
    Q_OBJECT

private slots:
    void historyLooksRebuiltAfterEveryChange_data() { addSeeds(); }
    void historyLooksRebuiltAfterEveryChange();
    void conversationsLookRebuiltAfterEveryChange_data() { addSeeds(); }
    void conversationsLookRebuiltAfterEveryChange();
    void longHistoryLooksRebuilt_data();
    void longHistoryLooksRebuilt();
    void unchangedRowsKeepTheirWidgets();

private:
    static void addSeeds();
};

void TestListRefresh::addSeeds()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : {1U, 2U, 3U, 4U, 5U, 6U})
        QTest::addRow("250 changes, seed %u", seed) << seed;
}

void TestListRefresh::historyLooksRebuiltAfterEveryChange()
{
    QFETCH(const quint32, seed);
    ChangingChat chat(seed);
    HistoryWindows windows;
    for (int i = 0; i < 250; ++i) {
        chat.change();
        if (chat.below(40) == 0) {
            const int width = 380 + chat.below(500);
            windows.refreshed.list.resize(width, 320);
            windows.rebuilt.list.resize(width, 320);
            windows.settle();
        }
        const int scrolled = chat.below(300);
        for (const QListWidget *list : {&windows.refreshed.list, &windows.rebuilt.list})
            list->verticalScrollBar()->setValue(scrolled);
        windows.show(chat.history());
        QCOMPARE(listState(&windows.refreshed.list), listState(&windows.rebuilt.list));
    }
}

void TestListRefresh::conversationsLookRebuiltAfterEveryChange()
{
    QFETCH(const quint32, seed);
    ChangingChat chat(seed);
    ListWindow refreshed(u"dmList"_s);
    ListWindow rebuilt(u"dmList"_s);
    for (ListWindow *window : {&refreshed, &rebuilt})
        window->list.resize(500, 600); // every row is near enough to have its widget
    auto *conversations = new ConversationList(&refreshed.list);
    for (int i = 0; i < 250; ++i) {
        chat.change();
        if (chat.below(5) == 0) {
            const int row = chat.below(6) - 1;
            refreshed.list.setCurrentRow(row);
            rebuilt.list.setCurrentRow(row);
        }
        const QList<ConversationRowModel> rows = chat.conversations();
        conversations->show(rows);
        rebuildConversations(&rebuilt.list, rows);
        settleWidgets();
        QTRY_VERIFY(conversations->isSettled());
        settleWidgets();
        QCOMPARE(listState(&refreshed.list), listState(&rebuilt.list));
    }
}

void TestListRefresh::longHistoryLooksRebuilt_data()
{
    QTest::addColumn<QList<int>>("numbers"); // of the messages that are shown second
    QList<int> all;
    for (int i = 0; i < 150; ++i)
        all.append(i);
    QList<int> backwards(all.crbegin(), all.crend());
    QTest::newRow("one more in front") << QList<int>{1000} + all;
    QTest::newRow("one more at the end") << all + QList<int>{1000};
    QTest::newRow("the first 100 gone") << all.sliced(100);
    QTest::newRow("backwards") << backwards;
    QTest::newRow("other messages") << QList<int>{2000, 2001, 2002};
    QTest::newRow("none") << QList<int>{};
}

void TestListRefresh::longHistoryLooksRebuilt()
{
    QFETCH(const QList<int>, numbers);
    const auto rows = [](const QList<int> &shown) {
        QList<HistoryRow> made;
        for (const int number : shown)
            made.append(MessageRowModel{.isMine = number % 3 == 0,
                                        .sender = number % 3 == 0 ? QString() : u"bob"_s,
                                        .text = QString::number(number),
                                        .time = u"12:00"_s});
        return made;
    };
    QList<int> all;
    for (int i = 0; i < 150; ++i)
        all.append(i);
    HistoryWindows windows;
    for (const QList<int> &shown : {all, numbers, all}) {
        windows.show(rows(shown));
        QCOMPARE(listState(&windows.refreshed.list), listState(&windows.rebuilt.list));
    }
}

void TestListRefresh::unchangedRowsKeepTheirWidgets()
{
    const auto row = [](const QString &text) {
        return HistoryRow(MessageRowModel{.isMine = true, .text = text});
    };
    ListWindow window(u"messageList"_s);
    auto *history = new HistoryList(&window.list);
    history->show({row(u"a"_s), row(u"b"_s), row(u"c"_s)});
    const auto widget = [&](int index) { return window.list.itemWidget(window.list.item(index)); };
    const QList<QWidget *> before{widget(0), widget(1), widget(2)};
    history->show({row(u"c"_s), row(u"x"_s), row(u"a"_s), row(u"y"_s)});
    settleWidgets();
    QCOMPARE(widget(0), before.at(2));
    QCOMPARE(widget(2), before.at(0));
    QCOMPARE(window.list.count(), 4);
}

TIDELOFT_GUI_TEST_MAIN(TestListRefresh)
#include "tst_list_refresh.moc"
