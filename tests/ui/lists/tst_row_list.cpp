// Entries that come into a list: what a screen reader hears of them, and their widgets. Run on a screen with
// a session bus, where assistive programs are listened to.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/lists/row_list.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

QStringList announced;

void listen(QAccessibleEvent *event)
{
    if (event->type() != QAccessible::TableModelChanged)
        return;
    const auto *change = static_cast<QAccessibleTableModelChangeEvent *>(event);
    announced.append(
        u"%1: %2 to %3"_s.arg(change->modelChangeType()).arg(change->firstRow()).arg(change->lastRow()));
}

void insert(QListWidget *list, int index, int count)
{
    insertEntries(list, index, count,
                  [](int number) { return new QListWidgetItem(u"entry %1"_s.arg(number)); });
}

/// The names of the widgets that it watches, as they get their styles.
class PolishOrder : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Polish)
            names.append(watched->objectName());
        return false;
    }

    QStringList names;
};

} // namespace

class TestRowList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { QAccessible::installUpdateHandler(nullptr); }
    void screenReaderHearsOfARunOnce();
    void screenReaderFindsEntriesThatMovedOn();
    void screenReaderReadsAnyOfMany();
    void rowGetsItsStylesFromTheOutsideIn();
};

void TestRowList::initTestCase()
{
    QTRY_VERIFY(QAccessible::isActive());
}

void TestRowList::screenReaderHearsOfARunOnce()
{
    QListWidget list;
    list.addItems({u"first"_s, u"last"_s});
    announced.clear();
    QAccessible::installUpdateHandler(listen);
    insert(&list, 1, 10'000);
    insert(&list, 1, 0);
    const QString expected = u"%1: 1 to 10000"_s.arg(QAccessibleTableModelChangeEvent::RowsInserted);
    QCOMPARE(announced, QStringList{expected});
}

void TestRowList::screenReaderFindsEntriesThatMovedOn()
{
    QListWidget list;
    list.addItems({u"first"_s, u"last"_s});
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&list);
    QAccessibleInterface *last = reader->child(1);
    QCOMPARE(last->text(QAccessible::Name), u"last"_s);
    insert(&list, 1, 3);
    QCOMPARE(reader->childCount(), 5);
    QCOMPARE(reader->child(4), last);
    QCOMPARE(last->text(QAccessible::Name), u"last"_s);
    QCOMPARE(reader->child(1)->text(QAccessible::Name), u"entry 0"_s);
    QCOMPARE(reader->child(3)->text(QAccessible::Name), u"entry 2"_s);
}

void TestRowList::screenReaderReadsAnyOfMany()
{
    QListWidget list;
    insert(&list, 0, 5'000);
    list.doItemsLayout();
    const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&list);
    QCOMPARE(reader->childCount(), 5'000);
    for (const int row : {0, 1, 2'500, 4'999})
        QCOMPARE(reader->child(row)->text(QAccessible::Name), u"entry %1"_s.arg(row));
}

// Otherwise the toolkit would keep the row's style for whatever comes to its address later.
void TestRowList::rowGetsItsStylesFromTheOutsideIn()
{
    PolishOrder order;
    QListWidget list;
    list.addItem(u"entry"_s);
    auto *row = new QWidget(list.viewport());
    row->setObjectName(u"row"_s);
    auto *text = new QLabel(u"text"_s, row);
    text->setObjectName(u"text"_s);
    (new QHBoxLayout(row))->addWidget(text);
    row->installEventFilter(&order);
    text->installEventFilter(&order);
    setRowWidget(&list, list.item(0), row, 50);
    QCOMPARE(order.names, (QStringList{u"row"_s, u"text"_s}));
}

TIDELOFT_GUI_TEST_MAIN(TestRowList)
#include "tst_row_list.moc"
