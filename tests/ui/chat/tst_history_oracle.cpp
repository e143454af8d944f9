// A history whose rows are made where somebody looks, beside the same one with all its rows made: whatever
// happens to both, nobody can tell them apart.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/eager_history.h"
#include "tests/support/long_form.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "tests/ui/chat/history_window.h"
#include "ui/chat/bubble_text.h"
#include "ui/chat/history_list.h"

#include <QAccessible>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

/// A history in its list, and its rows, which are the same in both ways of showing them.
template <typename History> struct Side {
    template <typename... Options>
    Side(QWidget *parent, quint32 seed, int count, Options... options)
        : window(parent),
          history(new History(&window.list, options...)),
          messages(seed),
          rows(messages.rows(count))
    {
    }

    HistoryWindow window;
    History *history;
    RandomHistory messages;
    QList<HistoryRow> rows;
};

/// The entries with a selection, and what is selected.
QStringList selections(const HistoryWindow &window)
{
    QStringList found;
    for (int index = 0; index < window.list.count(); ++index) {
        const MessageRow *row = window.row(index);
        if (row && row->text()->hasSelectedText())
            found.append(QString::number(index) + u' ' + row->text()->selectedText());
    }
    return found;
}

/// What stands at POINT of the viewport, as an index; -1 for nothing.
int indexAt(const HistoryWindow &window, QPoint point)
{
    const QListWidgetItem *entry = window.list.itemAt(point);
    return entry ? window.list.row(entry) : -1;
}

/// What a screen reader hears of the entry at INDEX, and where in the list.
QString heard(HistoryWindow &window, int index)
{
    const QAccessibleInterface *entry = QAccessible::queryAccessibleInterface(&window.list)->child(index);
    const QRect place = entry->rect().translated(-window.list.mapToGlobal(QPoint()));
    return u"%1 at %2, %3, %4 px high, %5"_s.arg(entry->text(QAccessible::Name))
        .arg(place.x())
        .arg(place.y())
        .arg(place.height())
        .arg(entry->role());
}

} // namespace

class TestHistoryOracle : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void looksLikeAListOfAllWidgets_data();
    void looksLikeAListOfAllWidgets();

private:
    using Lazy = Side<HistoryList>;
    using Eager = Side<EagerHistory>;

    int below(int limit) { return int(choose.bounded(limit)); }
    template <typename Change> void both(Change change);
    void act();
    void changeRows();
    void select();
    void settle();
    void compare();

    QRandomGenerator choose;
    bool isHeard = false;
    std::unique_ptr<Lazy> lazy;
    std::unique_ptr<Eager> eager;
};

template <typename Change> void TestHistoryOracle::both(Change change)
{
    change(*lazy);
    change(*eager);
}

void TestHistoryOracle::looksLikeAListOfAllWidgets_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("slice");
    QTest::newRow("slices of no time") << quint32(0) << 0;
    for (int seed = 1; seed <= rounds(6, 3'000); ++seed)
        QTest::addRow("seed %d", seed) << quint32(seed) << HistoryList::usualSlice;
}

// With an even seed a screen reader asks about rows. A computer may need longer than a slice to find out what
// is left to do.
void TestHistoryOracle::looksLikeAListOfAllWidgets()
{
    QFETCH(const quint32, seed);
    QFETCH(const int, slice);
    choose.seed(seed);
    isHeard = seed % 2 == 0;
    QWidget window; // both lists are in the same, so that both or none are active
    window.resize(2'000, 520);
    window.show();
    const int count = 150 + below(250);
    lazy = std::make_unique<Lazy>(&window, seed, count, slice);
    eager = std::make_unique<Eager>(&window, seed, count);
    eager->window.list.move(1'000, 0);
    both([](auto &side) { side.history->show(side.rows); });
    for (int step = 0; step < 20 && !QTest::currentTestFailed(); ++step) {
        act();
        settle();
        compare();
    }
    lazy.reset();
    eager.reset();
}

void TestHistoryOracle::act()
{
    switch (below(7)) {
    case 0:
    case 1:
        changeRows();
        [[fallthrough]];
    case 2:
        both([](auto &side) { side.history->show(side.rows); });
        break;
    case 3: {
        const QSize size(420 + below(500), 300 + below(200));
        both([size](auto &side) { side.window.list.resize(size); });
        break;
    }
    case 4: {
        const QFont font(below(2) ? u"DejaVu Serif"_s : u"DejaVu Sans"_s);
        both([font](auto &side) { side.window.list.setFont(font); });
        break;
    }
    case 5:
        select();
        break;
    default:
        settle(); // before, the two have different ranges
        const int value = below(eager->window.bar()->maximum() + 1);
        both([value](auto &side) { side.window.bar()->setValue(value); });
    }
}

/// A message goes, or comes, or says something else.
void TestHistoryOracle::changeRows()
{
    const int index = below(int(lazy->rows.size()));
    const int change = below(3);
    const HistoryRow added = MessageRowModel{.sender = u"bob"_s,
                                             .text = u"number %1"_s.arg(below(100)),
                                             .time = u"12:00"_s,
                                             .speaker = u"bob"_s,
                                             .clock = u"12:00"_s};
    both([&](auto &side) {
        if (change == 0)
            side.rows.remove(index);
        else if (change == 1)
            side.rows.insert(index, added);
        else
            side.rows[index] = added;
    });
}

/// Some text on screen, as far as there is a message.
void TestHistoryOracle::select()
{
    settle();
    const int index = indexAt(eager->window, {20, below(eager->window.list.viewport()->height())});
    const int length = 1 + below(5);
    both([&](auto &side) {
        if (const MessageRow *row = side.window.row(index))
            row->text()->setSelection(0, length);
    });
}

// Rows learn of new fonts by posted events.
void TestHistoryOracle::settle()
{
    QApplication::processEvents();
    eager->history->layOut();
    QTRY_VERIFY_WITH_TIMEOUT(lazy->history->isSettled(), 12 * patience());
    QApplication::processEvents();
}

void TestHistoryOracle::compare()
{
    HistoryWindow &ours = lazy->window;
    HistoryWindow &other = eager->window;
    QCOMPARE(ours.list.count(), other.list.count());
    QCOMPARE(ours.bar()->maximum(), other.bar()->maximum());
    QCOMPARE(ours.place().first, other.place().first);
    QCOMPARE(ours.place().second, other.place().second);
    QCOMPARE(ours.picture(), other.picture());
    QCOMPARE(selections(ours), selections(other));
    for (int i = 0; i < 5; ++i) {
        const QPoint point(below(600), below(420));
        QCOMPARE(indexAt(ours, point), indexAt(other, point));
        const int asked = below(ours.list.count());
        QCOMPARE(ours.list.item(asked)->sizeHint(), other.list.item(asked)->sizeHint());
        QCOMPARE(ours.list.item(asked)->data(Qt::AccessibleTextRole),
                 other.list.item(asked)->data(Qt::AccessibleTextRole));
        if (isHeard)
            QCOMPARE(heard(ours, asked), heard(other, asked));
    }
}

TIDELOFT_GUI_TEST_MAIN(TestHistoryOracle)
#include "tst_history_oracle.moc"
