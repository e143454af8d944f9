// A message's row and a day separator, part by part.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFrame>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

// The entries of the history below.
enum Entry { Day, OwnSingle, PeerSingle, OwnFirst, OwnMiddle, OwnLast, PeerFirst, PeerMiddle, PeerLast };

QJsonArray history()
{
    QJsonArray items;
    const auto add = [&items](const QString &from, int minute) {
        const QString time = u"2021-03-07T12:%1:00.000Z"_s.arg(minute, 2, 10, QChar(u'0'));
        items.append(plainMessage(from, u"text"_s, time));
    };
    add(u"alice"_s, 0);
    add(u"bob"_s, 1);
    for (const int minute : {10, 11, 12})
        add(u"alice"_s, minute);
    for (const int minute : {20, 21, 22})
        add(u"bob"_s, minute);
    return items;
}

QString alignmentName(Qt::Alignment alignment)
{
    return alignment & Qt::AlignRight ? u"right"_s : u"left"_s;
}

} // namespace

class TestMessageRow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void entryIsInert_data();
    void entryIsInert();
    void clickOnAMessageSelectsNothing();
    void marginsAre_data();
    void marginsAre();
    void rowShows_data();
    void rowShows();
    void partsAreStyled_data();
    void partsAreStyled();
    void bubbleIsLaidOut();
    void bubbleIsPainted_data();
    void bubbleIsPainted();
    void textCanBeSelectedWithTheMouse();
    void daySeparatorIsMadeOf_data();
    void daySeparatorIsMadeOf();

private:
    ShownMessage message(int entry) const { return shownMessage(chat.messageList(), entry); }
    QWidget *rowOf(int entry) const
    {
        return chat.messageList()->itemWidget(chat.messageList()->item(entry));
    }

    ChatPageProbe chat;
};

void TestMessageRow::initTestCase()
{
    failOnToolkitWarnings();
    chat.showHistory(history());
    QCOMPARE(chat.messageList()->count(), 9);
    QCOMPARE(chat.messageList()->spacing(), 0);
}

void TestMessageRow::entryIsInert_data()
{
    QTest::addColumn<int>("entry");
    QTest::newRow("day separator") << int(Day);
    QTest::newRow("own message") << int(OwnSingle);
    QTest::newRow("peer's message") << int(PeerFirst);
}

void TestMessageRow::entryIsInert()
{
    QFETCH(const int, entry);
    const QListWidgetItem *item = chat.messageList()->item(entry);
    QCOMPARE(item->flags(), Qt::ItemFlags(Qt::NoItemFlags));
    QCOMPARE(item->sizeHint(), rowOf(entry)->sizeHint());
    QVERIFY(item->sizeHint().height() > 20);
    QCOMPARE(rowOf(entry)->styleSheet(), u"background: transparent;"_s);
    QVERIFY(rowOf(entry)->testAttribute(Qt::WA_TranslucentBackground));
}

void TestMessageRow::clickOnAMessageSelectsNothing()
{
    clickRow(chat.messageList(), PeerSingle);
    QVERIFY(chat.messageList()->selectedItems().isEmpty());
    QVERIFY(!chat.messageList()->hasFocus());
}

void TestMessageRow::marginsAre_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QMargins>("margins");
    QTest::newRow("own, single") << int(OwnSingle) << QMargins(60, 8, 14, 6);
    QTest::newRow("own, first") << int(OwnFirst) << QMargins(60, 8, 14, 2);
    QTest::newRow("own, middle") << int(OwnMiddle) << QMargins(60, 2, 14, 2);
    QTest::newRow("own, last") << int(OwnLast) << QMargins(60, 2, 14, 6);
    QTest::newRow("peer's, single") << int(PeerSingle) << QMargins(14, 8, 60, 6);
    QTest::newRow("peer's, first") << int(PeerFirst) << QMargins(14, 8, 60, 2);
    QTest::newRow("peer's, middle") << int(PeerMiddle) << QMargins(14, 2, 60, 2);
    QTest::newRow("peer's, last") << int(PeerLast) << QMargins(14, 2, 60, 6);
}

void TestMessageRow::marginsAre()
{
    QFETCH(const int, entry);
    QTEST(rowOf(entry)->layout()->contentsMargins(), "margins");
    QCOMPARE(rowOf(entry)->layout()->spacing(), 8);
}

void TestMessageRow::rowShows_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<bool>("avatar");
    QTest::addColumn<bool>("name");
    QTest::addColumn<QString>("time");
    QTest::newRow("own, single") << int(OwnSingle) << false << false << u"12:00"_s;
    QTest::newRow("own, first") << int(OwnFirst) << false << false << QString();
    QTest::newRow("own, middle") << int(OwnMiddle) << false << false << QString();
    QTest::newRow("own, last") << int(OwnLast) << false << false << u"12:12"_s;
    QTest::newRow("peer's, single") << int(PeerSingle) << true << true << u"12:01"_s;
    QTest::newRow("peer's, first") << int(PeerFirst) << true << true << QString();
    QTest::newRow("peer's, middle") << int(PeerMiddle) << false << false << QString();
    QTest::newRow("peer's, last") << int(PeerLast) << false << false << u"12:22"_s;
}

void TestMessageRow::rowShows()
{
    QFETCH(const int, entry);
    const ShownMessage shown = message(entry);
    const QLayout *line = shown.row->layout();
    QTEST(shown.avatar != nullptr, "avatar");
    QTEST(shown.name != nullptr, "name");
    QTEST(shown.time ? shown.time->text() : QString(), "time");
    if (shown.time)
        QCOMPARE(alignmentName(shown.time->alignment()), shown.isMine ? u"right"_s : u"left"_s);
    QCOMPARE(line->count(), shown.isMine ? 2 : 3); // an own message has nothing right of its bubble
    QCOMPARE(line->itemAt(shown.isMine ? 0 : 2)->expandingDirections(), Qt::Horizontal);
    if (!shown.isMine) {
        QCOMPARE(shown.side.x(), 14);
        QCOMPARE(shown.side.width(), 34);
        QCOMPARE(line->itemAt(1)->geometry().x(), 14 + 34 + 8);
    }
}

void TestMessageRow::partsAreStyled_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    const auto styled = [](const char *part, const QWidget *widget, const QString &expected) {
        QTest::newRow(part) << widget->styleSheet() << expected;
    };
    styled("own bubble", message(OwnSingle).bubble, u"background: #2a5a8a; border-radius: 12px;"_s);
    styled("peer's bubble", message(PeerSingle).bubble, u"background: #1e2d3d; border-radius: 12px;"_s);
    styled("avatar", message(PeerFirst).avatar,
           u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
           "border-radius: 17px; color: #fff; font-size: 11px; font-weight: 700; border: none;"_s);
    styled("name", message(PeerFirst).name,
           u"color: #7ab0f5; font-size: 11px; font-weight: 700; background: transparent;"_s);
    styled("own text", message(OwnLast).text, u"color: #e8f0f8; font-size: 13px; background: transparent;"_s);
    styled("peer's text", message(PeerLast).text,
           u"color: #e8f0f8; font-size: 13px; background: transparent;"_s);
    styled("time", message(PeerLast).time, u"color: #5a7a9a; font-size: 10px; background: transparent;"_s);
}

void TestMessageRow::partsAreStyled()
{
    QFETCH(const QString, actual);
    QTEST(actual, "expected");
}

void TestMessageRow::bubbleIsLaidOut()
{
    const ShownMessage shown = message(PeerSingle);
    QCOMPARE(shown.bubble->maximumWidth(), 520);
    QCOMPARE(shown.bubble->layout()->contentsMargins(), QMargins(12, 8, 12, 8));
    QCOMPARE(shown.bubble->layout()->spacing(), 3);
    const QList<QLabel *> order{shown.name, shown.text, shown.time};
    for (int i = 0; i < order.size(); ++i)
        QCOMPARE(shown.bubble->layout()->itemAt(i)->widget(), order.at(i));
    QCOMPARE(shown.avatar->size(), QSize(34, 34));
    QCOMPARE(shown.avatar->alignment(), Qt::AlignCenter);
    QCOMPARE(shown.avatar->y(), 8);
    QCOMPARE(shown.row->layout()->itemAt(0)->alignment(), Qt::AlignTop);
    QCOMPARE(shown.avatar->text(), u"BO"_s);
}

void TestMessageRow::bubbleIsPainted_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("own") << int(OwnSingle) << QColor(u"#2a5a8a"_s);
    QTest::newRow("peer's") << int(PeerSingle) << QColor(u"#1e2d3d"_s);
}

void TestMessageRow::bubbleIsPainted()
{
    QFETCH(const int, entry);
    const ShownMessage shown = message(entry);
    const QImage picture = chat.messageList()->viewport()->grab().toImage();
    const auto pixel = [&](QPoint place) {
        return picture.pixelColor(shown.bubble->mapTo(chat.messageList()->viewport(), place));
    };
    QTEST(pixel({6, shown.bubble->height() / 2}), "colour");
    QCOMPARE(pixel({0, 0}), QColor(u"#0f1923"_s)); // outside the round corner
    QCOMPARE(pixel({-3, 20}), QColor(u"#0f1923"_s));
}

void TestMessageRow::textCanBeSelectedWithTheMouse()
{
    QLabel *text = message(PeerSingle).text;
    QCOMPARE(text->textInteractionFlags(), Qt::TextInteractionFlags(Qt::TextSelectableByMouse));
    QVERIFY(text->wordWrap());
    QTest::mouseDClick(text, Qt::LeftButton, {}, QPoint(4, text->height() / 2));
    QCOMPARE(text->selectedText(), u"text"_s);
}

void TestMessageRow::daySeparatorIsMadeOf_data()
{
    QTest::addColumn<QVariant>("actual");
    QTest::addColumn<QVariant>("expected");
    const auto fact = [](const char *name, const QVariant &actual, const QVariant &expected) {
        QTest::newRow(name) << actual << expected;
    };
    const auto *line = qobject_cast<QHBoxLayout *>(rowOf(Day)->layout());
    QCOMPARE(line->count(), 3);
    const auto *day = qobject_cast<QLabel *>(line->itemAt(1)->widget());
    fact("margins", QVariant::fromValue(line->contentsMargins()),
         QVariant::fromValue(QMargins(40, 18, 40, 10)));
    fact("label", day->text(), u"7 March 2021"_s);
    fact("label alignment", int(day->alignment()), int(Qt::AlignCenter));
    fact("label stretch", line->stretch(1), 0);
    fact("label style", day->styleSheet(),
         u"color: #5a7a9a; font-size: 11px; font-weight: 600; background: transparent;"_s);
    for (const int i : {0, 2}) {
        QWidget *rule = line->itemAt(i)->widget();
        fact(i ? "right line height" : "left line height", rule->height(), 1);
        fact(i ? "right line colour" : "left line colour",
             rule->grab().toImage().pixelColor(rule->width() / 2, 0).name(), u"#1a2d40"_s);
        fact(i ? "right line stretch" : "left line stretch", line->stretch(i), 1);
        fact(i ? "right line style" : "left line style", rule->styleSheet(),
             u"background: #1a2d40; max-height: 1px;"_s);
    }
}

void TestMessageRow::daySeparatorIsMadeOf()
{
    QFETCH(const QVariant, actual);
    QTEST(actual, "expected");
}

TIDELOFT_GUI_TEST_MAIN(TestMessageRow)
#include "tst_message_row.moc"
