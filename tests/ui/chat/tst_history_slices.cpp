// A long history: what is on screen is there at once, and all of it in the end, as if every row were made.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/eager_history.h"
#include "tests/support/test_main.h"
#include "ui/chat/bubble_text.h"
#include "ui/chat/history_list.h"
#include "ui/chat/message_row.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QListWidget>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

/// A list as in the client's chat page.
struct Window {
    Window()
    {
        list.setObjectName(u"messageList"_s);
        list.setStyleSheet(darkStyleSheet());
        list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list.setWordWrap(true);
        list.setSelectionMode(QAbstractItemView::NoSelection);
        list.setFocusPolicy(Qt::NoFocus);
        list.resize(600, 420);
        list.show();
        QApplication::processEvents();
    }

    QScrollBar *bar() const { return list.verticalScrollBar(); }
    MessageRow *row(int index) const { return qobject_cast<MessageRow *>(list.itemWidget(list.item(index))); }
    /// The entry at the top, and how far it is cut off there.
    std::pair<int, int> place() const
    {
        int index = 0;
        while (index < list.count() - 1 && list.visualItemRect(list.item(index)).bottom() < 0)
            ++index;
        return {index, list.visualItemRect(list.item(index)).top()};
    }

    QListWidget list;
};

int widgetCount(const Window &window)
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return int(window.list.viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size());
}

} // namespace

class TestHistorySlices : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newestAreThereAtOnce();
    void allAreOpenedInTheEnd();
    void onlyWhatIsNearHasWidgets();
    void whatIsScrolledToIsThereAtOnce();
    void placeStaysWhileOthersAreMeasured();
    void screenReaderReadsAnyRow();
    void selectionStaysFarAway();
    void stoppedWorkGoesOnWithTheNextRows();
    void looksLikeAListOfAllWidgets_data();
    void looksLikeAListOfAllWidgets();

private:
    QList<HistoryRow> rows(int count);

    QRandomGenerator random{1};
    int opened = 0;
};

void TestHistorySlices::init()
{
    random.seed(1);
    opened = 0;
}

QList<HistoryRow> TestHistorySlices::rows(int count)
{
    const auto open = [this](const QJsonObject &item) {
        ++opened;
        return item.value(u"text"_s).toString();
    };
    const QStringList some{u"hi"_s, u"line\nbreak"_s, u"🙂🔒"_s, QString(90, u'x'),
                           u"some words that go on for longer than a bubble is wide, "_s.repeated(3)};
    QJsonArray items;
    QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(8, 0), QTimeZone::utc()).toUTC();
    for (int i = 0; i < count; ++i) {
        time = time.addSecs(random.bounded(4'000));
        items.append(
            QJsonObject{{u"from"_s, random.bounded(2) ? u"alice"_s : u"bob"_s},
                        {u"encrypted"_s, true},
                        {u"text"_s, QString::number(i) + u' ' + some.at(random.bounded(int(some.size())))},
                        {u"createdAt"_s, time.toString(Qt::ISODate)}});
    }
    const Reading reading{u"alice"_s, open, time, Language::English};
    return historyRows(displayRecords(items, reading), QDate(2024, 6, 1), Language::English);
}

void TestHistorySlices::newestAreThereAtOnce()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(3'000));
    QVERIFY(window.list.count() > 3'000); // and the days
    QVERIFY2(opened <= HistoryList::newestAtOnce, qPrintable(QString::number(opened)));
    QCOMPARE(window.bar()->value(), window.bar()->maximum());
    for (int i = 1; i <= HistoryList::newestAtOnce; ++i)
        QVERIFY(window.list.itemWidget(window.list.item(window.list.count() - i)));
    QVERIFY(!window.list.itemWidget(window.list.item(0)));
    QVERIFY(!history->isSettled());
}

void TestHistorySlices::allAreOpenedInTheEnd()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(1'000));
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QCOMPARE(opened, 1'000); // each once
    QCOMPARE(window.bar()->value(), window.bar()->maximum());
}

void TestHistorySlices::onlyWhatIsNearHasWidgets()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(1'000));
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QCOMPARE(widgetCount(window), HistoryList::newestWithWidgets);
    for (const int value : {0, 8'000, 20'000, 4'000}) {
        window.bar()->setValue(value);
        QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
        QVERIFY(widgetCount(window) < HistoryList::newestWithWidgets + 150);
    }
}

void TestHistorySlices::whatIsScrolledToIsThereAtOnce()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(3'000));
    for (const int value : {60'000, 20'000, 0, 90'000}) {
        window.bar()->setValue(value);
        for (int y = 0; y < window.list.viewport()->height(); y += 10) {
            QListWidgetItem *entry = window.list.itemAt(20, y);
            const QWidget *row = entry ? window.list.itemWidget(entry) : nullptr;
            QVERIFY(row);
            QCOMPARE(entry->sizeHint(), row->sizeHint());
        }
    }
    QVERIFY(opened < 3'000);
}

void TestHistorySlices::placeStaysWhileOthersAreMeasured()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(1'500));
    for (const int value : {window.bar()->maximum() / 2, window.bar()->maximum() / 3}) {
        window.bar()->setValue(value);
        const auto place = window.place();
        const QPixmap picture = window.list.viewport()->grab();
        QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
        QCOMPARE(window.place().first, place.first);
        QCOMPARE(window.place().second, place.second);
        QCOMPARE(window.list.viewport()->grab().toImage(), picture.toImage());
        window.list.resize(window.list.width() - 100, 420); // and everything is an estimate again
        QApplication::processEvents();
    }
}

void TestHistorySlices::screenReaderReadsAnyRow()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(5'000));
    const int before = opened;
    const QString spoken = window.list.item(1)->data(Qt::AccessibleTextRole).toString();
    QVERIFY2(spoken.contains(u", 0 "_s), qPrintable(spoken));
    QCOMPARE(opened, before + 1);
}

void TestHistorySlices::selectionStaysFarAway()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    const QList<HistoryRow> shown = rows(1'000);
    history->show(shown);
    window.bar()->setValue(0);
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    const QPointer<MessageRow> row = window.row(1);
    QVERIFY(row);
    row->text()->setSelection(0, 1);
    history->show(shown); // scrolls to the end
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(row);
    QCOMPARE(row->text()->selectedText(), u"0"_s);
    QVERIFY(!window.row(3) || window.row(3) != row);
}

void TestHistorySlices::stoppedWorkGoesOnWithTheNextRows()
{
    Window window;
    auto *history = new HistoryList(&window.list);
    const QList<HistoryRow> shown = rows(1'000);
    history->show(shown);
    history->stop();
    QTest::qWait(0);
    QVERIFY(opened <= HistoryList::newestAtOnce);
    history->show(shown);
    QTRY_COMPARE_WITH_TIMEOUT(opened, 1'000, 60'000);
}

void TestHistorySlices::looksLikeAListOfAllWidgets_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : {1U, 2U, 3U})
        QTest::addRow("seed %u", seed) << seed;
}

// Scrolled, resized and changed at random, before and after all is measured.
void TestHistorySlices::looksLikeAListOfAllWidgets()
{
    QFETCH(const quint32, seed);
    random.seed(seed);
    Window lazy;
    Window eager;
    auto *lazyHistory = new HistoryList(&lazy.list);
    auto *eagerHistory = new EagerHistory(&eager.list);
    QList<HistoryRow> shown = rows(300);
    lazyHistory->show(shown);
    eagerHistory->show(shown);
    for (int step = 0; step < 25; ++step) {
        switch (random.bounded(4)) {
        case 0:
            shown.remove(random.bounded(int(shown.size())), 1);
            [[fallthrough]];
        case 1:
            lazyHistory->show(shown);
            eagerHistory->show(shown);
            break;
        case 2: {
            const QSize size(420 + random.bounded(500), 300 + random.bounded(200));
            lazy.list.resize(size);
            eager.list.resize(size);
            break;
        }
        default:
            const int value = random.bounded(eager.bar()->maximum() + 1);
            QTRY_VERIFY_WITH_TIMEOUT(lazyHistory->isSettled(), 60'000);
            lazy.bar()->setValue(value);
            eager.bar()->setValue(value);
        }
        QTRY_VERIFY_WITH_TIMEOUT(lazyHistory->isSettled(), 60'000);
        QApplication::processEvents();
        QCOMPARE(lazy.bar()->maximum(), eager.bar()->maximum());
        QCOMPARE(lazy.place().first, eager.place().first);
        QCOMPARE(lazy.place().second, eager.place().second);
        QCOMPARE(lazy.list.viewport()->grab().toImage(), eager.list.viewport()->grab().toImage());
        const int asked = random.bounded(lazy.list.count());
        QCOMPARE(lazy.list.item(asked)->data(Qt::AccessibleTextRole),
                 eager.list.item(asked)->data(Qt::AccessibleTextRole));
        QCOMPARE(lazy.list.item(asked)->sizeHint(), eager.list.item(asked)->sizeHint());
    }
}

TIDELOFT_GUI_TEST_MAIN(TestHistorySlices)
#include "tst_history_slices.moc"
