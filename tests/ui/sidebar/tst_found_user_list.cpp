// Found users in their list: many at once, each as high as its own name needs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "ui/sidebar/found_user_list.h"
#include "ui/style/style_sheets.h"
#include "ui/texts/bounded_text.h"
#include "ui/widgets/focus_ring.h"

#include <QApplication>
#include <QListWidget>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

/// A list as in the client's sidebar, when something was found.
struct Window {
    Window()
    {
        list.setObjectName(u"searchResults"_s);
        list.setStyleSheet(darkStyleSheet());
        list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        ringFocus(&list);
        list.resize(260, 180);
        list.show();
        QApplication::processEvents();
    }

    QListWidget list;
};

/// One entry after the other, each measured.
void fillOneByOne(QListWidget *list, const QStringList &usernames)
{
    list->clear();
    for (const QString &username : usernames) {
        auto *entry = new QListWidgetItem(u"👤  "_s + inOneLine(username), list);
        entry->setData(Qt::UserRole, username);
        entry->setSizeHint({0, list->sizeHintForRow(list->count() - 1)});
    }
}

/// 10,000 of them, few with other letters than plain ones.
QStringList manyNames()
{
    QStringList names;
    for (int i = 0; i < 10'000; ++i)
        names.append(i % 100 == 7 ? u"名前-%1"_s.arg(i) : u"user-%1"_s.arg(i));
    return names;
}

} // namespace

class TestFoundUserList : public QObject
{
    Q_OBJECT

private slots:
    void init() { tideloft::tests::failOnToolkitWarnings(); }
    void looksAsIfEachWereMeasured_data();
    void looksAsIfEachWereMeasured();
    void nothingStaysOfTheSearchBefore();
};

void TestFoundUserList::looksAsIfEachWereMeasured_data()
{
    QTest::addColumn<QStringList>("usernames");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{u"bob"_s};
    QTest::newRow("a high one first") << QStringList{u"ཧཱུྃ༔ ཨེ"_s, u"bob"_s, u"åsa"_s, u"eve"_s};
    QTest::newRow("other letters, one very long") << QStringList{
        u"åäö"_s, u"漢字"_s, u"bob"_s, u"🙂🔒"_s, u"ไทยกี้"_s, QString(5'000, u'x'), u"a\nb"_s};
    QTest::newRow("10,000") << manyNames();
}

void TestFoundUserList::looksAsIfEachWereMeasured()
{
    QFETCH(const QStringList, usernames);
    Window window;
    Window measured;
    showFoundUsers(&window.list, usernames);
    fillOneByOne(&measured.list, usernames);
    QApplication::processEvents();
    QCOMPARE(window.list.count(), usernames.size());
    for (int i = 0; i < usernames.size(); ++i) {
        QCOMPARE(window.list.item(i)->sizeHint(), measured.list.item(i)->sizeHint());
        QCOMPARE(window.list.item(i)->text(), measured.list.item(i)->text());
        QCOMPARE(window.list.item(i)->data(Qt::UserRole), measured.list.item(i)->data(Qt::UserRole));
    }
    QScrollBar *bar = window.list.verticalScrollBar();
    QCOMPARE(bar->maximum(), measured.list.verticalScrollBar()->maximum());
    for (const int value : {0, bar->maximum() / 2, bar->maximum()}) {
        bar->setValue(value);
        measured.list.verticalScrollBar()->setValue(value);
        QCOMPARE(window.list.grab().toImage(), measured.list.grab().toImage());
    }
}

void TestFoundUserList::nothingStaysOfTheSearchBefore()
{
    Window window;
    showFoundUsers(&window.list, {u"bob"_s, u"eve"_s});
    showFoundUsers(&window.list, {u"mia"_s});
    QCOMPARE(window.list.count(), 1);
    QCOMPARE(window.list.item(0)->data(Qt::UserRole).toString(), u"mia"_s);
    showFoundUsers(&window.list, {});
    QCOMPARE(window.list.count(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestFoundUserList)
#include "tst_found_user_list.moc"
