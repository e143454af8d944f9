// The pieces of the main page, as they are built: what stands where, how big, with which text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QBoxLayout>
#include <QFrame>
#include <QLabel>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowLayout : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void layouts_data();
    void layouts();
    void properties_data();
    void properties();
    void chatPageExpands_data();
    void chatPageExpands();
    void blocksOfTwoLines_data();
    void blocksOfTwoLines();
    void centredLabels_data();
    void centredLabels();
    void pointingHands_data();
    void pointingHands();
    void hintRows_data();
    void hintRows();
    void emptyStateStandsBetweenStretches();
    void searchResultsAreHiddenAtFirst();
};

namespace
{

void row(const QString &widget, const char *property, const QVariant &expected)
{
    QTest::addRow("%s %s", qPrintable(widget), property) << widget << QByteArray(property) << expected;
}

void fixedRows(const QString &widget, int width, int height)
{
    row(widget, "fixedWidth", width);
    row(widget, "fixedHeight", height);
}

const QString gradient = u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"_s;

void sidebarRows()
{
    row(u"leftSidebar"_s, "fixedWidth", 260);
    row(u"sideHeader"_s, "fixedHeight", 56);
    row(u"sidebarTitle"_s, "text", u"Meddelanden"_s);
    fixedRows(u"addDmBtn"_s, 28, 28);
    row(u"addDmBtn"_s, "text", u"+"_s);
    row(u"sideSearch"_s, "fixedHeight", 34);
    row(u"sideSearch"_s, "placeholderText", u"Sök eller starta konversation..."_s);
    row(u"searchResults"_s, "maximumHeight", 180);
    row(u"sideFooter"_s, "fixedHeight", 58);
    fixedRows(u"footerAvatar"_s, 34, 34);
    row(u"footerAvatar"_s, "text", u"?"_s);
    row(u"footerAvatar"_s, "toolTip", u"Klicka för att ändra profilbild"_s);
    row(u"footerAvatar"_s, "styleSheet",
        gradient
            + u"border-radius: 17px; border: 2px solid #3b8beb;color: #7ab0f5; font-size: 11px; "
              "font-weight: 700;"_s);
    row(u"myName"_s, "text", u"—"_s);
    row(u"myStatus"_s, "text", u"● Online"_s);
    row(u"quilloryBtn"_s, "text", u"Quillory"_s);
    row(u"quilloryBtn"_s, "fixedHeight", 24);
    row(u"quilloryBtn"_s, "styleSheet",
        u"background: #1a2e40; color: #5a7a9a; border: 1px solid #1e3a50;border-radius: 6px; font-size: "
        u"10px; "
        "padding: 0 10px;"_s);
    row(u"footerChevron"_s, "text", u"›"_s);
}

void centerRows()
{
    row(u"emptyInner"_s, "maximumWidth", 440);
    fixedRows(u"emptyIconContainer"_s, 80, 80);
    row(u"emptyIcon"_s, "text", u"💬"_s);
    row(u"emptySubtitle"_s, "wordWrap", true);
    row(u"emptyActionBtn"_s, "fixedHeight", 44);
    row(u"emptyActionBtn"_s, "minimumWidth", 220);
    row(u"chatHeader"_s, "fixedHeight", 56);
    fixedRows(u"peerAvatar"_s, 36, 36);
    row(u"headerLine"_s, "frameShape", static_cast<int>(QFrame::HLine));
    row(u"messageList"_s, "spacing", 0);
    row(u"messageList"_s, "wordWrap", true);
    row(u"messageList"_s, "selectionMode", static_cast<int>(QAbstractItemView::NoSelection));
    row(u"messageList"_s, "focusPolicy", static_cast<int>(Qt::NoFocus));
    row(u"msgInput"_s, "fixedHeight", 44);
    row(u"msgInput"_s, "minimumWidth", 400);
    row(u"msgInput"_s, "placeholderText", u"Skriv ett meddelande..."_s);
    row(u"sendButton"_s, "text", u"➤"_s);
    fixedRows(u"sendButton"_s, 40, 40);
}

} // namespace

void TestWindowLayout::layouts_data()
{
    QTest::addColumn<QString>("owner");
    QTest::addColumn<QString>("items");
    QTest::addColumn<QString>("spaces"); // empty, or "..." for the margins, where any will do
    const QString none = u"0 0 0 0, spacing 0"_s;
    QTest::newRow("sidebar") << u"leftSidebar"_s
                             << u"#sideHeader #searchWrap #searchResults #dmList*1 #sideFooter"_s << none;
    QTest::newRow("side header") << u"sideHeader"_s << u"#sidebarTitle stretch #addDmBtn(+)"_s << QString();
    QTest::newRow("search") << u"searchWrap"_s << u"#sideSearch"_s << u"12 6 12 10, spacing 0"_s;
    QTest::newRow("footer") << u"sideFooter"_s
                            << u"#footerAvatar [#myName #myStatus] stretch "
                               "#quilloryBtn(Quillory) 4 #footerChevron"_s
                            << u"14 0 14 0, spacing 10"_s;
    QTest::newRow("empty inner") << u"emptyInner"_s
                                 << u"#emptyIconContainer 20 #emptyTitle 8 #emptySubtitle 24 #emptyHints 28 "
                                    "#emptyActionBtn(➕  Starta ny konversation)"_s
                                 << u"..., spacing 0"_s;
    QTest::newRow("hints") << u"emptyHints"_s << u"#hintRow #hintRow #hintRow"_s << u"..., spacing 8"_s;
    QTest::newRow("chat header") << u"chatHeader"_s << u"#peerAvatar [#centerTitle #centerSubtitle] stretch"_s
                                 << u"18 0 18 0, spacing 12"_s;
    QTest::newRow("chat page") << u"chat page"_s << u"#chatHeader #headerLine #messageList*1 #inputArea"_s
                               << none;
    QTest::newRow("input area") << u"inputArea"_s << u"#msgInput*1 #sendButton(➤)"_s
                                << u"14 12 14 12, spacing 10"_s;
}

void TestWindowLayout::layouts()
{
    QFETCH(QString, owner);
    QFETCH(QString, spaces);
    const GuiProbe probe;
    const QWidget *widget = owner == u"chat page" ? probe.center()->widget(1) : probe.the<QWidget>(owner);
    QString items = itemsOf(widget);
    // A block of two lines may keep them together with stretches of its own.
    items.replace(u"[stretch "_s, u"["_s).replace(u" stretch]"_s, u"]"_s);
    QTEST(items, "items");
    if (spaces.startsWith(u"...,"_s))
        QCOMPARE(spacesOf(widget).section(u',', 1), spaces.section(u',', 1));
    else if (!spaces.isEmpty())
        QCOMPARE(spacesOf(widget), spaces);
}

void TestWindowLayout::properties_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("expected");
    sidebarRows();
    centerRows();
}

void TestWindowLayout::properties()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const GuiProbe probe;
    QTEST(propertyOf(*named(*probe.window, widget), property), "expected");
}

void TestWindowLayout::chatPageExpands_data()
{
    QTest::addColumn<bool>("list");
    QTest::newRow("page") << false;
    QTest::newRow("list") << true;
}

void TestWindowLayout::chatPageExpands()
{
    QFETCH(bool, list);
    const GuiProbe probe;
    const QWidget *widget = list ? probe.the<QWidget>(u"messageList"_s) : probe.center()->widget(1);
    QCOMPARE(widget->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(widget->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
}

void TestWindowLayout::blocksOfTwoLines_data()
{
    QTest::addColumn<QString>("owner");
    QTest::newRow("name over status") << u"sideFooter"_s;
    QTest::newRow("title over subtitle") << u"chatHeader"_s;
}

void TestWindowLayout::blocksOfTwoLines()
{
    QFETCH(QString, owner);
    const GuiProbe probe;
    const auto *block = qobject_cast<QVBoxLayout *>(probe.the<QWidget>(owner)->layout()->itemAt(1)->layout());
    QVERIFY(block);
    QCOMPARE(block->spacing(), 2);
}

void TestWindowLayout::centredLabels_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"emptyIcon", "emptyTitle", "emptySubtitle", "peerAvatar", "footerAvatar"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestWindowLayout::centredLabels()
{
    QFETCH(QString, name);
    const GuiProbe probe;
    QCOMPARE(probe.the<QLabel>(name)->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
}

void TestWindowLayout::pointingHands_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"addDmBtn", "sideFooter", "footerAvatar", "quilloryBtn", "emptyActionBtn", "sendButton"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestWindowLayout::pointingHands()
{
    QFETCH(QString, name);
    const GuiProbe probe;
    QCOMPARE(probe.the<QWidget>(name)->cursor().shape(), Qt::PointingHandCursor);
}

void TestWindowLayout::hintRows_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("text");
    QTest::newRow("encrypted") << 0 << u"🔒"_s << u"End-to-end krypterade meddelanden"_s;
    QTest::newRow("fast") << 1 << u"⚡"_s << u"Snabb och säker kommunikation"_s;
    QTest::newRow("everywhere") << 2 << u"🌍"_s << u"Fungerar överallt"_s;
}

void TestWindowLayout::hintRows()
{
    QFETCH(int, index);
    const GuiProbe probe;
    const QWidget *hint = probe.the<QWidget>(u"emptyHints"_s)->layout()->itemAt(index)->widget();
    QCOMPARE(itemsOf(hint), u"#hintIcon #hintText*1"_s);
    QCOMPARE(spacesOf(hint), u"0 0 0 0, spacing 10"_s);
    const auto *icon = only<QLabel>(*hint, u"hintIcon"_s);
    QTEST(icon->text(), "icon");
    QCOMPARE(propertyOf(*icon, "fixedWidth"), QVariant(20));
    QCOMPARE(icon->alignment(), Qt::AlignCenter);
    QTEST(only<QLabel>(*hint, u"hintText"_s)->text(), "text");
}

void TestWindowLayout::emptyStateStandsBetweenStretches()
{
    placeKeyPair();
    GuiProbe probe;
    const QString items = itemsOf(probe.the<QWidget>(u"emptyState"_s));
    QVERIFY2(items.startsWith(u"stretch*2 ["_s)
                 && items.contains(u"stretch #emptyInner*1 stretch] stretch"_s),
             qPrintable(items));
    QVERIFY(probe.signIn());
    const auto *inner = probe.the<QWidget>(u"emptyInner"_s);
    QVERIFY(qAbs(2 * inner->x() + inner->width() - inner->parentWidget()->width()) <= 2);
}

void TestWindowLayout::searchResultsAreHiddenAtFirst()
{
    placeKeyPair();
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.the<QWidget>(u"dmList"_s)->isVisible());
    QVERIFY(!probe.the<QWidget>(u"searchResults"_s)->isVisible());
}

TIDELOFT_GUI_TEST_MAIN(TestWindowLayout)
#include "tst_window_layout.moc"
