// A hint of the empty state: its two labels, the room of each, and their colours in both themes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/chat/hint_row.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestHintRow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void iconAndTextStandSideBySide();
    void markupIsText();
    void takesTheDefaultTextColourInTheDark();
    void hasItsOwnColoursInTheLight();
};

// Everything counts but the offscreen platform's remarks about what it cannot do.
void TestHintRow::init()
{
    QTest::failOnWarning(QRegularExpression(u"^(?!This plugin)"_s));
}

void TestHintRow::iconAndTextStandSideBySide()
{
    const std::unique_ptr<QWidget> row(makeHintRow(u"🔒"_s, u"Sealed"_s));
    QVERIFY(!row->parent());
    QCOMPARE(row->objectName(), u"hintRow"_s);
    const auto *layout = qobject_cast<QHBoxLayout *>(row->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(layout->spacing(), 10);
    QCOMPARE(layout->count(), 2);
    const auto *icon = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
    const auto *text = qobject_cast<QLabel *>(layout->itemAt(1)->widget());
    QCOMPARE(icon->objectName(), u"hintIcon"_s);
    QCOMPARE(icon->text(), u"🔒"_s);
    QCOMPARE(icon->minimumWidth(), 20);
    QCOMPARE(icon->maximumWidth(), 20);
    QCOMPARE(icon->alignment(), Qt::AlignCenter);
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(text->objectName(), u"hintText"_s);
    QCOMPARE(text->text(), u"Sealed"_s);
    QCOMPARE(layout->stretch(1), 1);
}

void TestHintRow::markupIsText()
{
    const std::unique_ptr<QWidget> row(makeHintRow(u"<b>x</b>"_s, u"<i>y</i>"_s));
    const auto labels = row->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 2);
    for (const QLabel *label : labels)
        QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(labels.at(1)->text(), u"<i>y</i>"_s);
}

static QColor textColour(const QString &sheet, const QString &label)
{
    QMainWindow window;
    window.setStyleSheet(sheet);
    window.setCentralWidget(makeHintRow(u"i"_s, u"text"_s));
    window.show();
    return window.findChild<QLabel *>(label)->palette().color(QPalette::WindowText);
}

void TestHintRow::takesTheDefaultTextColourInTheDark()
{
    QCOMPARE(textColour(darkStyleSheet(), u"hintIcon"_s), QColor(0xe0, 0xe0, 0xec));
    QCOMPARE(textColour(darkStyleSheet(), u"hintText"_s), QColor(0xe0, 0xe0, 0xec));
}

void TestHintRow::hasItsOwnColoursInTheLight()
{
    QCOMPARE(textColour(lightStyleSheet(), u"hintIcon"_s), QColor(0x60, 0x80, 0xa0));
    QCOMPARE(textColour(lightStyleSheet(), u"hintText"_s), QColor(0x40, 0x60, 0xa0));
}

TIDELOFT_GUI_TEST_MAIN(TestHintRow)
#include "tst_hint_row.moc"
