// A box shows all of an error, whatever its letters, and never outgrows half the screen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_hostile_probe.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"
#include "ui/texts/bounded_text.h"
#include "ui/widgets/message_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

class TestHostileBoxes : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void cleanup() { qDeleteAll(QApplication::topLevelWidgets()); }
    void staysOnScreen_data();
    void staysOnScreen();
    void ordinaryTextsStandInTheLabel_data();
    void ordinaryTextsStandInTheLabel();
    void scrolledTextLeavesTheKeyboardToTheButton();

private:
    QMessageBox *show(const QString &text);
};

QMessageBox *TestHostileBoxes::show(const QString &text)
{
    showWarning(nullptr, text);
    QMessageBox *box = nullptr;
    const auto isShown = [&] {
        box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        return box && QApplication::activeWindow() == box;
    };
    return waitFor(isShown, patience()) ? box : nullptr;
}

void TestHostileBoxes::staysOnScreen_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &letter : {u"i"_s, u"n"_s, u"W"_s, u"ﷺ"_s, u"中"_s, u"\u05d0"_s, u"\u00a0"_s})
        QTest::addRow("4,000 of %s without a break", qPrintable(letter)) << letter.repeated(4'000);
    QTest::newRow("1,000 emoji") << u"🔥"_s.repeated(1'000);
    QTest::newRow("2,000 wide pairs") << u"𒐫"_s.repeated(2'000);
    QTest::newRow("800 wide words") << u"WWWW "_s.repeated(800);
    QTest::newRow("one word wider than the box") << QString(100, u'W') + u" end"_s;
    QTest::newRow("40 lines") << u"line\n"_s.repeated(40) + u"end"_s;
    QTest::newRow("2,000 lines") << u"x\n"_s.repeated(2'000);
    QTest::newRow("3,999 line breaks") << QString(3'999, u'\n');
    QTest::newRow("1,000 letters with marks") << u"a\u0301\u0302\u0303"_s.repeated(1'000);
    QTest::newRow("4,000 tabs") << QString(4'000, u'\t');
    QTest::newRow("tabs between letters") << u"a\t"_s.repeated(2'000);
    QTest::newRow("next lines") << u"a\u0085"_s.repeated(2'000);
    QTest::newRow("text variants of the toolkit") << u"a\u009c"_s.repeated(2'000);
    QTest::newRow("a short variant first") << u"x\u009c"_s + u"long "_s.repeated(700);
    QTest::newRow("a short variant last") << u"long "_s.repeated(700) + u"\u009cx"_s;
}

void TestHostileBoxes::staysOnScreen()
{
    QFETCH(const QString, text);
    QCOMPARE(firstPart(text, errorLimits), text);
    const QMessageBox *box = show(text);
    QVERIFY(box);
    const QSize half = box->screen()->availableSize() / 2;
    QVERIFY2(box->width() <= half.width() && box->height() <= half.height(),
             qPrintable(u"%1 x %2"_s.arg(box->width()).arg(box->height())));
    QCOMPARE(box->text(), text);
    const QAbstractButton *button = box->button(QMessageBox::Ok);
    QVERIFY(box->rect().contains(QRect(button->mapTo(box, QPoint()), button->size())));
    auto *view = box->findChild<QPlainTextEdit *>();
    QVERIFY(view && view->isVisible());
    QVERIFY(box->rect().contains(QRect(view->mapTo(box, QPoint()), view->size())));
    QCOMPARE(view->document()->characterCount(), text.size() + 1); // and the end of the document
    QCOMPARE(view->horizontalScrollBar()->maximum(), 0);           // every word is broken
    view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
    QTextCursor end = view->textCursor();
    end.movePosition(QTextCursor::End);
    QVERIFY(view->viewport()->rect().intersects(view->cursorRect(end)));
}

void TestHostileBoxes::ordinaryTextsStandInTheLabel_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short") << u"Wrong password"_s;
    QTest::newRow("the program's own") << u"Recipient has no registered keys."_s;
    QTest::newRow("sentences") << u"Something has gone wrong on the way to the service. "_s.repeated(5);
    QTest::newRow("five lines") << u"a\nb\nc\nd\ne"_s;
    QTest::newRow("empty") << QString();
}

void TestHostileBoxes::ordinaryTextsStandInTheLabel()
{
    QFETCH(const QString, text);
    const QMessageBox *box = show(text);
    QVERIFY(box);
    QVERIFY(!box->findChild<QPlainTextEdit *>());
    const auto *label = box->findChild<QLabel *>(u"qt_msgbox_label"_s);
    QCOMPARE(label->text(), text);
    QVERIFY(label->isVisible());
}

void TestHostileBoxes::scrolledTextLeavesTheKeyboardToTheButton()
{
    const QPointer<QMessageBox> box = show(u"line\n"_s.repeated(100));
    QVERIFY(box);
    QCOMPARE(QApplication::focusWidget(), box->button(QMessageBox::Ok));
    auto *view = box->findChild<QPlainTextEdit *>();
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Tab);
    QVERIFY(view->document()->isModified() == false && !view->hasFocus());
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_VERIFY(!box);
}

TIDELOFT_GUI_TEST_MAIN(TestHostileBoxes)
#include "tst_hostile_boxes.moc"
