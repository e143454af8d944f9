// The window's skeleton: its sizes, its pages, the three columns of the main page, and the rail.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QScrollArea>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowShell : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void titleAndSizes();
    void pagesAtTheStart();
    void freshWindowSendsNothing();
    void layouts_data();
    void layouts();
    void railProperties_data();
    void railProperties();
    void railItemsStandInTheMiddle();
    void separatorOfTheRail();
    void languageIndexOutsideTheListIsSwedish();
};

void TestWindowShell::titleAndSizes()
{
    const tideloft::ui::MainWindow window;
    QCOMPARE(window.windowTitle(), u"TideLoft"_s);
    QCOMPARE(window.size(), QSize(1100, 720));
    QCOMPARE(window.minimumSize(), QSize(800, 560));
    QCOMPARE(window.centralWidget()->metaObject()->className(), "QWidget");
}

void TestWindowShell::pagesAtTheStart()
{
    const GuiProbe probe;
    QCOMPARE(probe.root()->count(), 2);
    QCOMPARE(probe.root()->currentIndex(), 0);
    QVERIFY(probe.root()->widget(0)->findChild<QWidget *>(u"authCard"_s));
    QVERIFY(probe.root()->widget(1)->findChild<QWidget *>(u"rail"_s));
    QCOMPARE(probe.center()->count(), 2); // the settings come when they are first shown
    QCOMPARE(probe.center()->widget(0)->objectName(), u"emptyState"_s);
    QVERIFY(probe.center()->widget(1)->findChild<QWidget *>(u"chatHeader"_s));
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestWindowShell::freshWindowSendsNothing()
{
    GuiProbe probe;
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1);
}

void TestWindowShell::layouts_data()
{
    QTest::addColumn<QString>("owner"); // empty: the central widget; "main page": that one
    QTest::addColumn<QString>("items");
    QTest::addColumn<QString>("spaces");
    QTest::newRow("central widget") << u""_s << u"QStackedWidget"_s << u"0 0 0 0, spacing 0"_s;
    QTest::newRow("three columns") << u"main page"_s << u"#rail #leftSidebar #centerPanel*1"_s
                                   << u"0 0 0 0, spacing 0"_s;
    QTest::newRow("rail") << u"rail"_s
                          << u"#railLogo 16 #railBtn(💬) QFrame QScrollArea #railBtn(+) stretch #railBtn(⚙)"_s
                          << u"8 14 8 14, spacing 6"_s;
    QTest::newRow("center panel") << u"centerPanel"_s << u"QStackedWidget*1"_s << u"0 0 0 0, spacing 0"_s;
}

void TestWindowShell::layouts()
{
    QFETCH(QString, owner);
    const GuiProbe probe;
    const QWidget *widget = owner.isEmpty()         ? probe.window->centralWidget()
                            : owner == u"main page" ? probe.root()->widget(1)
                                                    : probe.the<QWidget>(owner);
    QTEST(itemsOf(widget), "items");
    QTEST(spacesOf(widget), "spaces");
}

void TestWindowShell::railProperties_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const QString &widget, const char *property, const QVariant &expected) {
        QTest::addRow("%s %s", qPrintable(widget), property) << widget << QByteArray(property) << expected;
    };
    row(u"rail"_s, "fixedWidth", 56);
    row(u"railLogo"_s, "fixedWidth", 36);
    row(u"railLogo"_s, "fixedHeight", 36);
    row(u"railLogo"_s, "text", u"TL"_s);
    row(u"railLogo"_s, "alignment", static_cast<int>(Qt::AlignCenter));
    for (const QString &button : {u"railBtn=💬"_s, u"railBtn=+"_s, u"railBtn=⚙"_s}) {
        row(button, "fixedWidth", 36);
        row(button, "fixedHeight", 36);
        row(button, "cursor", static_cast<int>(Qt::PointingHandCursor));
    }
    row(u"railBtn=💬"_s, "checkable", true);
    row(u"railBtn=💬"_s, "checked", true);
    row(u"railBtn=💬"_s, "toolTip", u"Meddelanden"_s);
    row(u"railBtn=+"_s, "checkable", false);
    row(u"railBtn=+"_s, "toolTip", u"Skapa server"_s);
    row(u"railBtn=+"_s, "styleSheet",
        u"QPushButton { background: rgba(31,216,130,0.1); border: 1px solid rgba(31,216,130,0.25); "
        u"border-radius: "
        "10px; color: #1fd882; font-size: 20px; }QPushButton:hover { background: rgba(31,216,130,0.2); }"_s);
    row(u"railBtn=⚙"_s, "checkable", true);
    row(u"railBtn=⚙"_s, "checked", false);
    row(u"railBtn=⚙"_s, "styleSheet", QString());
    row(u"railBtn=⚙"_s, "toolTip", u"Inställningar"_s);
    for (const char *way : {"horizontal", "vertical"})
        row(u"centerPanel"_s, way, static_cast<int>(QSizePolicy::Expanding));
}

void TestWindowShell::railProperties()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const GuiProbe probe;
    const QWidget *found = named(*probe.window, widget);
    QVariant actual = propertyOf(*found, property);
    if (property == "horizontal")
        actual = static_cast<int>(found->sizePolicy().horizontalPolicy());
    if (property == "vertical")
        actual = static_cast<int>(found->sizePolicy().verticalPolicy());
    QTEST(actual, "expected");
}

void TestWindowShell::railItemsStandInTheMiddle()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    const auto *rail = probe.the<QWidget>(u"rail"_s);
    int seen = 0;
    for (int i = 0; i < rail->layout()->count(); ++i) {
        const QWidget *item = rail->layout()->itemAt(i)->widget();
        if (!item || item->geometry().isEmpty())
            continue;
        // The border at the right edge takes a pixel: half of it may show.
        const double middle = item->x() + item->width() / 2.0;
        QVERIFY2(qAbs(middle - 28.0) <= 1.0, qPrintable(item->objectName()));
        ++seen;
    }
    QVERIFY(seen >= 5); // the logo, three buttons and the line
}

void TestWindowShell::separatorOfTheRail()
{
    const GuiProbe probe;
    const auto *rail = probe.the<QWidget>(u"rail"_s);
    const auto *line = qobject_cast<QFrame *>(rail->layout()->itemAt(3)->widget());
    QVERIFY(line);
    QCOMPARE(line->frameShape(), QFrame::HLine);
    QCOMPARE(line->styleSheet(), u"background: #1a2d40; max-height: 1px; border: none; margin: 0 8px;"_s);
    const auto *place = qobject_cast<QScrollArea *>(rail->layout()->itemAt(4)->widget());
    QVERIFY(place);
    const QWidget *servers = place->widget();
    QVERIFY(qobject_cast<QVBoxLayout *>(servers->layout()));
    QCOMPARE(itemsOf(servers), QString());
    QCOMPARE(spacesOf(servers), u"0 0 0 0, spacing 4"_s);
}

void TestWindowShell::languageIndexOutsideTheListIsSwedish()
{
    const GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QCOMPARE(probe.the<QLabel>(u"authTitle"_s)->text(), u"Welcome back!"_s);
    probe.window->setLanguageIndex(-1);
    QCOMPARE(probe.the<QLabel>(u"authTitle"_s)->text(), u"Välkommen tillbaka!"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestWindowShell)
#include "tst_window_shell.moc"
