// Fuzzing of the list of a history: rows that come and go, scrolls, sizes and slices, in any order.
//
// The first byte of an input is the number of rows at the beginning; each step after it has up to three
// bytes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_list.h"
#include "tests/fuzz/require.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QListWidget>
#include <QScrollBar>

using namespace tideloft::tests;
using namespace tideloft::ui;
using namespace Qt::StringLiterals;

namespace
{

/// The application, and a window in the client's look.
struct Screen {
    Screen() { window.setStyleSheet(darkStyleSheet()); }

    int count = 1;
    char program[5] = "fuzz";
    char *arguments[2] = {program, nullptr};
    const bool isOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application{count, arguments};
    QWidget window;
};

class Input
{
public:
    Input(const uint8_t *bytes, size_t size) : at(bytes), end(bytes + size) {}

    [[nodiscard]] bool isAtEnd() const { return at == end; }
    int byte() { return isAtEnd() ? 0 : *at++; }
    /// From 0 to MOST.
    int atMost(int most) { return int(qint64(byte()) * most / 255); }

private:
    const uint8_t *at;
    const uint8_t *end;
};

QString textOf(int number)
{
    const QString texts[]{
        u"hi"_s,           {},
        u"line\nbreak"_s,  u"🙂🔒"_s,
        QString(90, u'x'), u"漢字"_s,
        u"نص عربي"_s,      u"some words that go on for longer than a bubble is wide, "_s.repeated(3)};
    return texts[number % 8];
}

HistoryRow rowOf(int number)
{
    if (number % 16 == 15)
        return DaySeparatorModel{u"day %1"_s.arg(number)};
    return MessageRowModel{.isMine = number % 2 == 1,
                           .position = static_cast<GroupPosition>(number / 2 % 4),
                           .sender = number % 4 == 2 ? u"bob"_s : QString(),
                           .text = textOf(number / 16),
                           .time = number % 3 == 0 ? u"12:00"_s : QString()};
}

/// One history in a list of its own.
class History
{
public:
    History(QWidget *window, int count) : list(window), history(new HistoryList(&list))
    {
        list.setObjectName(u"messageList"_s);
        list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list.resize(600, 420);
        for (int i = 0; i < count; ++i)
            rows.append(rowOf(i * 7));
        window->show();
        list.show();
        QApplication::processEvents();
        show();
    }

    void step(Input &input);
    void end();

private:
    void show();
    void changeRow(Input &input);
    void insertRows(Input &input);
    void removeRows(Input &input);
    void checkScreen() const;
    void checkEntry(int index) const;
    void checkAll() const;
    [[nodiscard]] HistoryEntry *entry(int index) const
    {
        return static_cast<HistoryEntry *>(list.item(index));
    }

    QListWidget list;
    HistoryList *history;
    QList<HistoryRow> rows;
};

void History::show()
{
    history->show(rows);
    require(list.count() == rows.size(), "every row has an entry");
    require(list.verticalScrollBar()->value() == list.verticalScrollBar()->maximum(), "the end is shown");
}

void History::changeRow(Input &input)
{
    const int index = input.atMost(int(rows.size()) - 1);
    const int number = input.byte();
    if (!rows.isEmpty())
        rows[index] = rowOf(number);
}

void History::insertRows(Input &input)
{
    const int index = input.atMost(int(rows.size()));
    const int number = input.byte();
    for (int i = 0; i < 1 + number / 64 && rows.size() < 600; ++i)
        rows.insert(index, rowOf(number + i));
}

void History::removeRows(Input &input)
{
    const int index = input.atMost(int(rows.size()));
    rows.remove(index, qMin(qsizetype(input.byte()), rows.size() - index));
}

void History::step(Input &input)
{
    switch (input.byte() % 8) {
    case 0:
        insertRows(input);
        return;
    case 1:
        removeRows(input);
        return;
    case 2:
        changeRow(input);
        return;
    case 3:
        show();
        break;
    case 4: {
        const int width = 200 + 3 * input.byte();
        list.resize(width, 20 + 2 * input.byte()); // without any height the toolkit scrolls nothing
        break;
    }
    case 5:
        list.verticalScrollBar()->setValue(input.atMost(list.verticalScrollBar()->maximum()));
        break;
    case 6:
        history->stop();
        return;
    default:
        QApplication::processEvents(); // a slice, if one is due
    }
    checkScreen();
}

void History::checkEntry(int index) const
{
    HistoryEntry *shown = entry(index);
    require(shown->isMeasured() && shown->isApplied(), "what is on screen is measured");
    require(shown->widgetRow() && *shown->widgetRow() == shown->row(), "what is on screen has its widget");
    require(list.itemWidget(shown)->geometry() == list.visualItemRect(shown), "a widget stands in its place");
}

void History::checkScreen() const
{
    const RowRange seen = rowsOnScreen(&list);
    for (int index = seen.first; index < seen.end; ++index)
        checkEntry(index);
}

// A widget of the user's own would stay wherever it is, but nobody is at any.
void History::checkAll() const
{
    int height = 0;
    int widgets = 0;
    for (int index = 0; index < list.count(); ++index) {
        require(entry(index)->row() == rows.at(index), "rows stand in their order");
        require(entry(index)->isMeasured(), "every row is measured in the end");
        height += entry(index)->sizeHint().height();
        const QWidget *row = list.itemWidget(entry(index));
        widgets += row ? 1 : 0;
        require(!row || row->sizeHint() == entry(index)->sizeHint(), "a row is as high as its widget");
        require(row || index < list.count() - HistoryList::newestWithWidgets, "the newest have widgets");
    }
    const int range = qMax(height - list.viewport()->height(), 0);
    require(list.verticalScrollBar()->maximum() == range, "the list scrolls through all rows");
    const RowRange seen = rowsOnScreen(&list);
    require(widgets <= HistoryList::newestWithWidgets + 7 * qMax(seen.end - seen.first, 10),
            "rows far away have no widgets");
}

void History::end()
{
    show();
    for (int turns = 0; !history->isSettled(); ++turns) {
        require(turns < 100'000, "the work comes to an end");
        QApplication::processEvents();
    }
    QApplication::processEvents();
    checkAll();
    checkScreen();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Screen &screen = *new Screen; // at the end of the program the toolkit's own parts go before it
    Input input(data, qMin<size_t>(size, 200));
    History history(&screen.window, input.byte());
    while (!input.isAtEnd())
        history.step(input);
    history.end();
    return 0;
}
