// A label that cuts its text where the room ends, and never asks for more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/elided_label.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestElidedLabel : public QObject
{
    Q_OBJECT

private slots:
    void asksForTheWholeTextAndContentsItselfWithNothing();
    void lineBreaksMakeItNoHigher();
    void whatIsCutEndsWithAnEllipsis_data();
    void whatIsCutEndsWithAnEllipsis();
    void markupIsText();
};

namespace
{

QImage drawn(QLabel &label, const QString &text, int width)
{
    label.setText(text);
    label.resize(width, 30);
    return label.grab().toImage();
}

} // namespace

void TestElidedLabel::asksForTheWholeTextAndContentsItselfWithNothing()
{
    const QString name = u"A name of some length"_s;
    const ElidedLabel label(name, nullptr, u"title"_s);
    QCOMPARE(label.objectName(), u"title"_s);
    QCOMPARE(label.sizeHint(), QLabel(name).sizeHint());
    QCOMPARE(label.minimumSizeHint(), QSize(0, label.sizeHint().height()));
}

void TestElidedLabel::lineBreaksMakeItNoHigher()
{
    const QString text = u"One\nTwo\nThree"_s;
    const ElidedLabel label(text, nullptr);
    QCOMPARE(label.text(), text);
    QCOMPARE(label.sizeHint().height(), QLabel(u"One Two Three"_s).sizeHint().height());
    QVERIFY(label.sizeHint().width() >= QLabel(u"One Two Three"_s).sizeHint().width());
}

void TestElidedLabel::whatIsCutEndsWithAnEllipsis_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one line") << u"More words than there is room for"_s;
    QTest::newRow("two lines") << u"More words than\nthere is room for"_s;
    QTest::newRow("has room") << u"short"_s;
}

void TestElidedLabel::whatIsCutEndsWithAnEllipsis()
{
    QFETCH(const QString, text);
    constexpr int room = 90;
    ElidedLabel label({}, nullptr);
    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    const QString line = QString(text).replace(u'\n', u' ');
    const QString cut = plain.fontMetrics().elidedText(line, Qt::ElideRight, room);
    QCOMPARE(cut.endsWith(u'…'), text.size() > 10);
    QCOMPARE(drawn(label, text, room), drawn(plain, cut, room));
    QCOMPARE(label.text(), text);
}

void TestElidedLabel::markupIsText()
{
    const QString markup = u"<b>x</b>"_s;
    ElidedLabel label({}, nullptr);
    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QCOMPARE(drawn(label, markup, 200), drawn(plain, markup, 200));
}

TIDELOFT_GUI_TEST_MAIN(TestElidedLabel)
#include "tst_elided_label.moc"
