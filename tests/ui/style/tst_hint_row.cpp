// A hint of the empty state: its two labels, and the room of each.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/hint_row.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestHintRow : public QObject
{
    Q_OBJECT

private slots:
    void iconAndTextStandSideBySide();
    void markupIsText();
};

void TestHintRow::iconAndTextStandSideBySide()
{
    const std::unique_ptr<QWidget> row(makeHintRow(u"🔒"_s, u"Sealed"_s));
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
    for (const QLabel *label : row->findChildren<QLabel *>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
}

TIDELOFT_GUI_TEST_MAIN(TestHintRow)
#include "tst_hint_row.moc"
