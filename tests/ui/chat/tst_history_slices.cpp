// A long history: what is on screen is there at once, and all of it in the end, as if every row were made.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "tests/ui/chat/history_window.h"
#include "ui/chat/bubble_text.h"
#include "ui/chat/history_list.h"

#include <QAccessible>
#include <QPointer>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

int widgetCount(const HistoryWindow &window)
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return int(window.list.viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size());
}

/// The height of all rows.
int contentHeight(const HistoryWindow &window)
{
    const auto bottom = [&](int index) {
        return window.list.visualItemRect(window.list.item(index)).bottom();
    };
    return bottom(window.list.count() - 1) - window.list.visualItemRect(window.list.item(0)).top() + 1;
}

/// Makes the viewport HEIGHT px high.
void setViewHeight(HistoryWindow &window, int height)
{
    window.list.resize(420, window.list.height() - window.list.viewport()->height() + height);
    QApplication::processEvents();
}

/// Other fonts come as other style sheets.
void setFontFamily(HistoryWindow &window, const QString &family)
{
    window.list.setStyleSheet(darkStyleSheet() + u"QWidget { font-family: \"%1\"; }"_s.arg(family));
}

/// Has a scroll bar after every other layout, as if rows were higher where they are wider.
class RestlessList : public QListWidget
{
public:
    void doItemsLayout() override
    {
        const bool hasBar = verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn;
        if (isRestless)
            setVerticalScrollBarPolicy(hasBar ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
        changes += isRestless ? 1 : 0;
        QListWidget::doItemsLayout();
    }

    bool isRestless = false;
    int changes = 0;
};

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
    void selectingGoesOnAcrossARefresh();
    void stoppedWorkGoesOnWithTheNextRows();
    void rowsFitBesideAScrollBarThatOtherFontsBring();
    void slicesEndThoughEachBringsAnotherWidth();

private:
    QList<HistoryRow> rows(int count) { return messages->rows(count); }
    [[nodiscard]] int opened() const { return messages->opened; }

    std::unique_ptr<RandomHistory> messages;
};

void TestHistorySlices::init()
{
    messages = std::make_unique<RandomHistory>(1);
}

void TestHistorySlices::newestAreThereAtOnce()
{
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(3'000));
    QVERIFY(window.list.count() > 3'000); // and the days
    QVERIFY2(opened() <= HistoryList::newestAtOnce, qPrintable(QString::number(opened())));
    QCOMPARE(window.bar()->value(), window.bar()->maximum());
    for (int i = 1; i <= HistoryList::newestAtOnce; ++i)
        QVERIFY(window.list.itemWidget(window.list.item(window.list.count() - i)));
    QVERIFY(!window.list.itemWidget(window.list.item(0)));
    QVERIFY(!history->isSettled());
}

void TestHistorySlices::allAreOpenedInTheEnd()
{
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(1'000));
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QCOMPARE(opened(), 1'000); // each once
    QCOMPARE(window.bar()->value(), window.bar()->maximum());
}

void TestHistorySlices::onlyWhatIsNearHasWidgets()
{
    HistoryWindow window;
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
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(3'000));
    for (const int value : {60'000, 20'000, 0, 90'000}) {
        window.bar()->setValue(value);
        for (int y = 0; y < window.list.viewport()->height(); y += 10) {
            QListWidgetItem *entry = window.list.itemAt(20, y);
            QVERIFY(entry);
            QVERIFY(window.list.itemWidget(entry));
            QCOMPARE(entry->sizeHint(), window.list.itemWidget(entry)->sizeHint());
        }
    }
    QVERIFY(opened() < 3'000);
}

void TestHistorySlices::placeStaysWhileOthersAreMeasured()
{
    HistoryWindow window;
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
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    history->show(rows(5'000));
    const int before = opened();
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&window.list);
    QCOMPARE(reader->childCount(), window.list.count());
    const QString spoken = reader->child(1)->text(QAccessible::Name);
    QVERIFY2(spoken.contains(u", 0 "_s), qPrintable(spoken));
    QCOMPARE(opened(), before + 1);
    QVERIFY(!window.row(1));
}

void TestHistorySlices::selectionStaysFarAway()
{
    HistoryWindow window;
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
    QVERIFY(!window.row(3));
    row->text()->setSelection(0, 0); // and goes when nothing is selected any more
    window.bar()->setValue(window.bar()->maximum() - 1);
    QTRY_VERIFY(!row);
}

void TestHistorySlices::selectingGoesOnAcrossARefresh()
{
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    const QList<HistoryRow> shown = rows(1'000);
    history->show(shown);
    window.bar()->setValue(0);
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    const QPointer<BubbleText> text = window.row(1)->text();
    QTest::mousePress(text, Qt::LeftButton, {}, {1, 5});
    history->show(shown); // scrolls to the end
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(text);
    QTest::mouseMove(text, {text->width() - 1, 5});
    QTest::mouseRelease(text, Qt::LeftButton, {}, {text->width() - 1, 5});
    QVERIFY(text->hasSelectedText());
    QVERIFY2(text->selectedText().startsWith(u'0'), qPrintable(text->selectedText()));
}

void TestHistorySlices::stoppedWorkGoesOnWithTheNextRows()
{
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    const QList<HistoryRow> shown = rows(1'000);
    history->show(shown);
    history->stop();
    QTest::qWait(0);
    QVERIFY(opened() <= HistoryList::newestAtOnce);
    history->show(shown);
    QTRY_COMPARE_WITH_TIMEOUT(opened(), 1'000, 60'000);
}

// The scroll bar comes in a slice: in the fonts before, all rows fit.
void TestHistorySlices::rowsFitBesideAScrollBarThatOtherFontsBring()
{
    HistoryWindow window;
    auto *history = new HistoryList(&window.list);
    const QString fonts[]{u"DejaVu Sans"_s, u"DejaVu Sans Mono"_s};
    int heights[2]{};
    setViewHeight(window, 30'000);
    history->show(rows(60));
    for (const int i : {0, 1}) {
        setFontFamily(window, fonts[i]);
        QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
        heights[i] = contentHeight(window);
    }
    const int higher = heights[0] > heights[1] ? 0 : 1;
    QVERIFY(heights[higher] - heights[1 - higher] > 5);
    setFontFamily(window, fonts[1 - higher]);
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    setViewHeight(window, heights[higher] - 5);
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QVERIFY(!window.bar()->isVisible());

    setFontFamily(window, fonts[higher]);
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QVERIFY(window.bar()->isVisible());
    for (int i = 0; i < window.list.count(); ++i) {
        auto *entry = static_cast<HistoryEntry *>(window.list.item(i));
        QVERIFY2(entry->isMeasured(), qPrintable(u"row %1 of %2"_s.arg(i).arg(window.list.count())));
        QCOMPARE(entry->sizeHint(), window.list.itemWidget(entry)->sizeHint());
        QCOMPARE(window.list.visualItemRect(entry).width(), window.list.viewport()->width());
    }
}

void TestHistorySlices::slicesEndThoughEachBringsAnotherWidth()
{
    RestlessList list;
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    list.resize(420, 300);
    list.show();
    QApplication::processEvents();
    auto *history = new HistoryList(&list);
    history->show(rows(300));
    list.isRestless = true;
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QVERIFY(list.changes > 1); // it was restless
    list.isRestless = false;
    list.verticalScrollBar()->setValue(0);
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    for (int i = 0; i < list.count(); ++i)
        QVERIFY(static_cast<HistoryEntry *>(list.item(i))->isMeasured());
}

TIDELOFT_GUI_TEST_MAIN(TestHistorySlices)
#include "tst_history_slices.moc"
