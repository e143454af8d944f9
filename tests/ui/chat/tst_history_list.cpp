// How messages fill the width of their page: no text is cut, no bubble too wide, own ones stand at the right.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLayout>
#include <QScrollBar>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QList<int> widths{800, 1100, 1600};

/// Why the row is not as it should be below a viewport of WIDTH; empty if it is.
QString fault(const ShownMessage &shown, int width)
{
    const QWidget *row = shown.row;
    const QWidget *bubble = shown.bubble;
    if (row->width() != width)
        return u"the row is %1 px wide in a view of %2 px"_s.arg(row->width()).arg(width);
    if (bubble->width() > 520)
        return u"the bubble is %1 px wide"_s.arg(bubble->width());
    if (shown.isMine && bubble->geometry().right() + 1 != width - 14)
        return u"the bubble ends %1 px from the right"_s.arg(width - bubble->geometry().right() - 1);
    if (!shown.isMine && bubble->x() != 14 + 34 + 8)
        return u"the bubble starts at %1 px"_s.arg(bubble->x());
    if (bubble->geometry().right() >= width - 14)
        return u"the bubble reaches out of the row"_s;
    if (shown.text->height() < shown.text->fontMetrics().height())
        return u"the text has no line"_s;
    if (shown.text->height() < shown.text->heightForWidth(shown.text->width()))
        return u"the text is cut at %1 px"_s.arg(shown.text->height());
    shown.text->grab(); // a label lays its lines out when it is drawn
    const auto *lines = shown.text->findChild<QTextDocument *>();
    if (lines && lines->idealWidth() > shown.text->width())
        return u"a line is %1 px long"_s.arg(lines->idealWidth());
    if (bubble->height() < bubble->layout()->totalHeightForWidth(bubble->width()))
        return u"the bubble is cut at %1 px"_s.arg(bubble->height());
    if (bubble->geometry().bottom() + 1 + row->layout()->contentsMargins().bottom() > row->height())
        return u"the row is cut at %1 px"_s.arg(row->height());
    return {};
}

} // namespace

class TestHistoryList : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void textsFit_data();
    void textsFit();
    void textsFitAfterAResize_data();
    void textsFitAfterAResize();
    void shortTextStaysOnOneLine();
    void longTextFillsTheBubble();
    void wordWithoutEndNeitherWidensTheWindowNorTheView();
    void firstHistoryFitsBeforeThePageWasEverShown();

private:
    void addTexts(const QList<int> &forWidths);
    void showAt(int width, const QString &text);
    QString faults() const;
    void resize(int width);

    ChatPageProbe chat;
};

void TestHistoryList::addTexts(const QList<int> &forWidths)
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("text");
    const QList<QPair<const char *, QString>> texts{
        {"one letter", u"x"_s},
        {"short", u"Hello there"_s},
        {"empty", {}},
        {"long", u"The quick brown fox jumps over the lazy dog. "_s.repeated(20)},
        {"many lines", u"line\n"_s.repeated(30)},
        {"long lines and breaks",
         u"some words that go on and on for longer than a line is wide, \n\n"_s.repeated(9)},
        {"emoji", u"🙂🔒🌍"_s},
        {"many emoji", u"🙂 🔒 🌍 "_s.repeated(20)},
        {"wide script", u"漢字かな交じり文"_s.repeated(30)},
        {"tabs and blanks", u"a\tb   c\t"_s.repeated(40)},
        {"words held together", u"abcdefgh\u00a0"_s.repeated(60)},
        {"words held together narrowly", u"abcdefgh\u202f"_s.repeated(60)},
        {"just about a line", u"wwwwwwwwww wwwwwwwwww wwwwwwwwww wwwwwwwwww wwwwwwww"_s},
    };
    for (const int width : forWidths) {
        for (const auto &[name, text] : texts)
            QTest::addRow("%s at %d px", name, width) << width << text;
    }
}

void TestHistoryList::resize(int width)
{
    chat.window.resize(width - ChatPageProbe::besides, 720);
    QApplication::processEvents();
}

void TestHistoryList::showAt(int width, const QString &text)
{
    resize(width);
    const QString time = u"2021-03-07T12:00:00.000Z"_s;
    chat.showHistory({plainMessage(u"alice"_s, text, time), plainMessage(u"bob"_s, text, time),
                      plainMessage(u"bob"_s, text, time), plainMessage(u"alice"_s, text, time)});
}

QString TestHistoryList::faults() const
{
    const QListWidget *list = chat.messageList();
    if (list->horizontalScrollBar()->maximum() > 0)
        return u"the view scrolls sideways"_s;
    for (int i = 1; i < list->count(); ++i) {
        const ShownMessage shown = shownMessage(list, i);
        if (list->item(i)->sizeHint() != shown.row->sizeHint() || !shown.row->sizeHint().isValid())
            return u"entry %1 does not have its row's size hint"_s.arg(i);
        if (const QString found = fault(shown, list->viewport()->width()); !found.isEmpty())
            return u"entry %1: %2"_s.arg(i).arg(found);
    }
    return {};
}

void TestHistoryList::textsFit_data()
{
    addTexts(widths);
}

void TestHistoryList::textsFit()
{
    QFETCH(const int, width);
    QFETCH(const QString, text);
    showAt(width, text);
    QCOMPARE(chat.messageList()->count(), 5);
    QTRY_COMPARE(faults(), QString());
    QCOMPARE(chat.window.width(), width - ChatPageProbe::besides);
}

void TestHistoryList::textsFitAfterAResize_data()
{
    addTexts({800, 1600});
}

void TestHistoryList::textsFitAfterAResize()
{
    QFETCH(const int, width);
    QFETCH(const QString, text);
    showAt(1100, text);
    resize(width);
    QTRY_COMPARE(faults(), QString());
    resize(1100);
    QTRY_COMPARE(faults(), QString());
}

void TestHistoryList::shortTextStaysOnOneLine()
{
    showAt(1100, u"Hello there"_s);
    const QLabel *text = shownMessage(chat.messageList(), 2).text;
    QTRY_COMPARE(faults(), QString());
    QVERIFY(text->height() < 2 * text->fontMetrics().lineSpacing());
}

void TestHistoryList::longTextFillsTheBubble()
{
    showAt(1600, u"The quick brown fox jumps over the lazy dog. "_s.repeated(20));
    QTRY_COMPARE(faults(), QString());
    QVERIFY(shownMessage(chat.messageList(), 1).bubble->width() > 400);
    QVERIFY(shownMessage(chat.messageList(), 2).bubble->width() > 400);
}

void TestHistoryList::wordWithoutEndNeitherWidensTheWindowNorTheView()
{
    for (const int width : widths) {
        showAt(width, QString(5000, u'x'));
        QTRY_COMPARE(faults(), QString());
        QCOMPARE(chat.window.width(), width - ChatPageProbe::besides);
    }
}

void TestHistoryList::firstHistoryFitsBeforeThePageWasEverShown()
{
    const QString text = u"The quick brown fox jumps over the lazy dog. "_s.repeated(20);
    PageWindow window(QSize(1100 - ChatPageProbe::besides, 720));
    auto *fresh = new tideloft::ui::ChatPage(ChatPageProbe::language, &window);
    ChatPageProbe::showHistory(fresh, {plainMessage(u"bob"_s, text), plainMessage(u"alice"_s, text)});
    window.showPage(fresh);
    const auto *list = only<QListWidget>(*fresh, u"messageList"_s);
    for (const int entry : {1, 2})
        QTRY_COMPARE(fault(shownMessage(list, entry), list->viewport()->width()), QString());
}

TIDELOFT_GUI_TEST_MAIN(TestHistoryList)
#include "tst_history_list.moc"
