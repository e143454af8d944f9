// Tests of polishTree().
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/lists/polish_tree.h"

#include <QLabel>
#include <QWidget>

#include <cstddef>
#include <new>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestPolishTree : public QObject
{
    Q_OBJECT

private slots:
    void everyWidgetHasItsStyle();
    void nextWidgetAtTheSameAddressWearsItsOwn();
};

void TestPolishTree::everyWidgetHasItsStyle()
{
    QWidget window;
    QWidget row(&window);
    QWidget box(&row);
    QLabel text(&box);
    row.setStyleSheet(u"QLabel { font-size: 31px; }"_s);
    QVERIFY(text.font().pixelSize() != 31);
    polishTree(&row);
    QCOMPARE(text.font().pixelSize(), 31);
    for (const QWidget *widget : {&row, &box, static_cast<QWidget *>(&text)})
        QVERIFY(widget->testAttribute(Qt::WA_WState_Polished));
}

void TestPolishTree::nextWidgetAtTheSameAddressWearsItsOwn()
{
    QWidget window;
    window.setStyleSheet(u"QWidget { font-size: 13px; }"_s);
    alignas(QWidget) std::byte place[sizeof(QWidget)];
    auto *first = new (place) QWidget(&window);
    first->setStyleSheet(u"background: #ff0000;"_s);
    new QLabel(u"a label"_s, first);
    polishTree(first);
    first->~QWidget();
    auto *second = new (place) QWidget(&window);
    second->setAttribute(Qt::WA_StyledBackground);
    second->setStyleSheet(u"background: #00ff00;"_s);
    const QColor seen = second->grab().toImage().pixelColor(0, 0);
    second->~QWidget();
    QCOMPARE(seen, QColor(u"#00ff00"_s));
}

TIDELOFT_GUI_TEST_MAIN(TestPolishTree)
#include "tst_polish_tree.moc"
