// Copying messages: the menu of a right click, and the key that copies, wherever the keyboard is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_page_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestHistoryCopy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void menuSpeaksTheLanguageOfTheMoment_data();
    void menuSpeaksTheLanguageOfTheMoment();
    void copiesTheWholeMessage_data();
    void copiesTheWholeMessage();
    void copiesTheSelection();
    void actsForAnAssistiveProgram();
    void selectsAll_data();
    void selectsAll();
    void noMenuWhereNoMessageIs();
    void aRefreshMayTakeTheMessageOfTheMenu();
    void aRefreshKeepsWhatTheMenuSelected();
    void theKeyCopiesTheSelection();
    void theKeyTakesTheFieldsOwnSelection();

private:
    QLabel *text(int index) const { return shownMessage(chat.messageList(), index).text; }
    QLabel *selectWord(int index) const;
    QMenu *menuAt(const QWidget *widget, QPoint spot) const;
    QMenu *menuOf(int index) const { return menuAt(text(index), QPoint(4, text(index)->height() / 2)); }
    static QString copied() { return QApplication::clipboard()->text(); }
    void pressCopy() const { QTest::keyClick(chat.window.windowHandle(), Qt::Key_C, Qt::ControlModifier); }

    ChatPageProbe chat;
    const QJsonArray items{plainMessage(u"alice"_s, u"first words"_s, u"2021-03-07T12:00:00.000Z"_s),
                           plainMessage(u"bob"_s, u"second\nline"_s, u"2021-03-07T12:20:00.000Z"_s)};
};

void TestHistoryCopy::init()
{
    failOnToolkitWarnings();
    chat.page->retranslate(Language::English);
    chat.showHistory({});
    chat.showHistory(items);
    QCOMPARE(chat.messageList()->count(), 3);
    QApplication::processEvents();
    chat.msgInput()->setText(u"draft"_s);
    chat.msgInput()->deselect();
    QApplication::clipboard()->setText(u"before"_s);
}

/// Selects the word below the mouse as a person does; returns its label.
QLabel *TestHistoryCopy::selectWord(int index) const
{
    QLabel *label = text(index);
    QTest::mouseDClick(label, Qt::LeftButton, {}, QPoint(4, 8));
    return label;
}

/// The menu that a right click brings up; null if none comes.
QMenu *TestHistoryCopy::menuAt(const QWidget *widget, QPoint spot) const
{
    clickAt(widget, spot, Qt::RightButton);
    QApplication::processEvents();
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

void TestHistoryCopy::menuSpeaksTheLanguageOfTheMoment_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("Swedish") << Language::Swedish << QStringList{u"Kopiera"_s, u"Markera allt"_s};
    QTest::newRow("English") << Language::English << QStringList{u"Copy"_s, u"Select all"_s};
}

void TestHistoryCopy::menuSpeaksTheLanguageOfTheMoment()
{
    QFETCH(Language, language);
    chat.page->retranslate(language);
    const QPointer menu = menuOf(1);
    QVERIFY(menu);
    QTEST(entriesOf(menu), "entries");
    QCOMPARE(menu->styleSheet(), QString()); // dressed by the window's sheet
    QVERIFY(!menu->accessibleName().isEmpty());
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!menu);
    QCOMPARE(copied(), u"before"_s);
}

void TestHistoryCopy::copiesTheWholeMessage_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("besideTheText");
    QTest::addColumn<QString>("expected");
    QTest::newRow("own") << 1 << false << u"first words"_s;
    QTest::newRow("another's, with its line breaks") << 2 << false << u"second\nline"_s;
    QTest::newRow("beside the text") << 2 << true << u"second\nline"_s;
}

void TestHistoryCopy::copiesTheWholeMessage()
{
    QFETCH(int, row);
    QFETCH(bool, besideTheText);
    const QWidget *bubble = shownMessage(chat.messageList(), row).bubble;
    const QPointer menu = besideTheText ? menuAt(bubble, QPoint(3, 3)) : menuOf(row);
    QVERIFY(menu);
    clickEntry(menu, 0);
    QTEST(copied(), "expected");
    QTRY_VERIFY(!menu);
    QVERIFY(!text(row)->hasSelectedText());
}

void TestHistoryCopy::copiesTheSelection()
{
    const QLabel *label = selectWord(1);
    QMenu *menu = menuOf(1);
    QVERIFY(menu);
    QCOMPARE(label->selectedText(), u"first"_s);
    clickEntry(menu, 0);
    QCOMPARE(copied(), u"first"_s);
}

void TestHistoryCopy::actsForAnAssistiveProgram()
{
    const QPointer menu = menuOf(1);
    QVERIFY(menu);
    pressAsAssistant(menu, 0);
    QCOMPARE(copied(), u"first words"_s);
    QTRY_VERIFY(!menu);
}

void TestHistoryCopy::selectsAll_data()
{
    QTest::addColumn<bool>("besideTheText");
    QTest::newRow("on the text") << false;
    QTest::newRow("beside the text, with the keyboard elsewhere") << true;
}

void TestHistoryCopy::selectsAll()
{
    QFETCH(bool, besideTheText);
    chat.msgInput()->setFocus();
    const QWidget *bubble = shownMessage(chat.messageList(), 2).bubble;
    QMenu *menu = besideTheText ? menuAt(bubble, QPoint(3, 3)) : menuOf(2);
    QVERIFY(menu);
    clickEntry(menu, 1);
    QCOMPARE(text(2)->selectedText(), u"second"_s + QChar(QChar::ParagraphSeparator) + u"line"_s);
    QCOMPARE(copied(), u"before"_s);
    pressCopy();
    QCOMPARE(copied(), u"second\nline"_s);
}

void TestHistoryCopy::noMenuWhereNoMessageIs()
{
    const QListWidget *list = chat.messageList();
    QVERIFY(!menuAt(list->viewport(), list->visualItemRect(list->item(0)).center())); // the day
    QVERIFY(!menuAt(list->viewport(), list->viewport()->rect().bottomLeft() - QPoint(-5, 5)));
}

void TestHistoryCopy::aRefreshMayTakeTheMessageOfTheMenu()
{
    const QPointer<QLabel> label = text(2);
    for (const int entry : {1, 0}) {
        QMenu *menu = menuOf(2);
        QVERIFY(menu);
        chat.showHistory({items.at(0)});
        QTRY_VERIFY(!label);
        QVERIFY(menu->isVisible());
        clickEntry(menu, entry);
        QCOMPARE(copied(), entry == 0 ? u"second\nline"_s : u"before"_s);
        chat.showHistory(items);
        QApplication::processEvents();
    }
}

void TestHistoryCopy::aRefreshKeepsWhatTheMenuSelected()
{
    QMenu *menu = menuOf(1);
    QVERIFY(menu);
    clickEntry(menu, 1);
    chat.showHistory({items.at(0), plainMessage(u"bob"_s, u"new"_s, {})});
    QCOMPARE(text(1)->selectedText(), u"first words"_s);
    pressCopy();
    QCOMPARE(copied(), u"first words"_s);
}

void TestHistoryCopy::theKeyCopiesTheSelection()
{
    for (const int row : {2, 1, 2}) {
        selectWord(row);
        chat.showHistory(items); // a refresh in between
        pressCopy();
        QCOMPARE(copied(), row == 1 ? u"first"_s : u"second"_s);
    }
    QCOMPARE(chat.msgInput()->text(), u"draft"_s);
}

void TestHistoryCopy::theKeyTakesTheFieldsOwnSelection()
{
    selectWord(1);
    chat.msgInput()->setFocus();
    pressCopy();
    QCOMPARE(copied(), u"before"_s);
    chat.msgInput()->selectAll();
    pressCopy();
    QCOMPARE(copied(), u"draft"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestHistoryCopy)
#include "tst_history_copy.moc"
