// Which rows of a list are on screen, and near it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/lists/visible_rows.h"

#include <QApplication>
#include <QListWidget>
#include <QScrollBar>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestVisibleRows : public QObject
{
    Q_OBJECT

private slots:
    void rowsOnScreenAre_data();
    void rowsOnScreenAre();
    void longListIsAskedAsLittleAsAShortOne();
    void rowsAroundAre_data();
    void rowsAroundAre();
    void nearestComeFirst_data();
    void nearestComeFirst();
    void rangeGrowsToARow();
};

namespace
{

/// Rows of 50 px in a viewport of 200 px.
struct Window {
    explicit Window(int count)
    {
        list.setFrameStyle(QFrame::NoFrame);
        list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        for (int i = 0; i < count; ++i)
            (new QListWidgetItem(&list))->setSizeHint({0, 50});
        list.resize(100, 200);
        list.show();
        QApplication::processEvents();
    }

    QListWidget list;
};

/// Counts how often a list asks for a row's size, which it does for each place of a row.
class CountingDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++asked;
        return QStyledItemDelegate::sizeHint(option, index);
    }

    mutable int asked = 0;
};

int questionsAbout(int count)
{
    Window window(count);
    auto *delegate = new CountingDelegate(&window.list);
    window.list.setItemDelegate(delegate);
    window.list.verticalScrollBar()->setValue(window.list.verticalScrollBar()->maximum() / 3);
    QApplication::processEvents();
    delegate->asked = 0;
    rowsOnScreen(&window.list);
    return delegate->asked;
}

} // namespace

void TestVisibleRows::rowsOnScreenAre_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("scrolled");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("end");
    QTest::newRow("no row") << 0 << 0 << 0 << 0;
    QTest::newRow("all of few") << 2 << 0 << 0 << 2;
    QTest::newRow("as many as fit") << 4 << 0 << 0 << 4;
    QTest::newRow("the first of many") << 100 << 0 << 0 << 4;
    QTest::newRow("two cut rows count") << 100 << 49 << 0 << 5;
    QTest::newRow("one whole row on") << 100 << 50 << 1 << 5;
    QTest::newRow("the end") << 100 << 4'800 << 96 << 100;
}

void TestVisibleRows::rowsOnScreenAre()
{
    QFETCH(const int, count);
    QFETCH(const int, scrolled);
    const Window window(count);
    window.list.verticalScrollBar()->setValue(scrolled);
    const RowRange rows = rowsOnScreen(&window.list);
    QTEST(rows.first, "first");
    QTEST(rows.end, "end");
    QVERIFY(count == 0 || (rows.contains(rows.first) && !rows.contains(rows.end)));
}

void TestVisibleRows::longListIsAskedAsLittleAsAShortOne()
{
    QVERIFY(questionsAbout(10) > 0);
    QCOMPARE(questionsAbout(5'000), questionsAbout(10));
}

void TestVisibleRows::rowsAroundAre_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("expectedFirst");
    QTest::addColumn<int>("expectedEnd");
    QTest::newRow("at the beginning") << 100 << 0 << 4 << 0 << 24;
    QTest::newRow("in the middle") << 100 << 50 << 54 << 30 << 74;
    QTest::newRow("at the end") << 100 << 96 << 100 << 76 << 100;
    QTest::newRow("of few") << 3 << 0 << 3 << 0 << 3;
    QTest::newRow("of a high screen") << 100 << 40 << 55 << 10 << 85;
}

void TestVisibleRows::rowsAroundAre()
{
    QFETCH(const int, count);
    QFETCH(const int, first);
    QFETCH(const int, end);
    const Window window(count);
    const RowRange rows = rowsAround(&window.list, {first, end}, 2);
    QTEST(rows.first, "expectedFirst");
    QTEST(rows.end, "expectedEnd");
}

void TestVisibleRows::nearestComeFirst_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("end");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("in the middle") << 2 << 7 << QList{4, 5, 3, 6, 2};
    QTest::newRow("more before") << 1 << 6 << QList{4, 5, 3, 2, 1};
    QTest::newRow("more after") << 4 << 9 << QList{4, 5, 6, 7, 8};
    QTest::newRow("nothing around") << 4 << 6 << QList{4, 5};
}

void TestVisibleRows::nearestComeFirst()
{
    QFETCH(const int, first);
    QFETCH(const int, end);
    QTEST(nearestFirst({4, 6}, {first, end}), "expected");
}

void TestVisibleRows::rangeGrowsToARow()
{
    RowRange range;
    const QList<QPair<int, RowRange>> steps{{7, {7, 8}}, {9, {7, 10}}, {3, {3, 10}}, {5, {3, 10}}};
    for (const auto &[index, grown] : steps) {
        range = range.with(index);
        QCOMPARE(range.first, grown.first);
        QCOMPARE(range.end, grown.end);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestVisibleRows)
#include "tst_visible_rows.moc"
