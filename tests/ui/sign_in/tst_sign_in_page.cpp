// The sign-in page as it is built, before anything is typed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/page_window.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "ui/sign_in/sign_in_page.h"
#include "ui/style/grid_widget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSignInPage : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void rootIsTheGrid();
    void layouts_data();
    void layouts();
    void properties_data();
    void properties();
    void cardStandsInTheMiddle_data();
    void cardStandsInTheMiddle();
    void dividersAreLines();
    void oneLabelOutsideTheLayoutStaysHidden();
    void languagesInTheirOrder();
};

namespace
{

/// The page as it stands before anything is typed.
struct SignInProbe {
    SignInProbe() : page(new tideloft::ui::SignInPage(&window))
    {
        page->build();
        page->retranslate();
        window.showPage(page);
    }
    template <typename Widget> Widget *the(const QString &name) const { return only<Widget>(*page, name); }

    PageWindow window{QSize(1100, 720)};
    tideloft::ui::SignInPage *page;
};

void row(const QString &widget, const char *property, const QVariant &expected)
{
    QTest::addRow("%s %s", qPrintable(widget), property) << widget << QByteArray(property) << expected;
}

void topRows()
{
    row(u"authTopbar"_s, "fixedHeight", 40);
    row(u"tbLogo"_s, "fixedWidth", 24);
    row(u"tbLogo"_s, "fixedHeight", 24);
    row(u"tbLogo"_s, "text", u"TL"_s);
    row(u"tbLogo"_s, "alignment", static_cast<int>(Qt::AlignCenter));
    row(u"tbLogoName"_s, "text", u"TideLoft"_s);
    row(u"langCombo"_s, "fixedWidth", 120);
    row(u"langCombo"_s, "currentIndex", 0);
    row(u"authCard"_s, "fixedWidth", 340);
    row(u"cardBrandIco"_s, "text", u"TL"_s);
    row(u"authSubtitle"_s, "wordWrap", true);
    row(u"secBadgeText"_s, "text", u"End-to-end encrypted · TLS 1.3"_s);
}

void fieldRows()
{
    row(u"username"_s, "minimumHeight", 38);
    row(u"username"_s, "text", QString());
    row(u"password"_s, "minimumHeight", 38);
    row(u"password"_s, "echoMode", static_cast<int>(QLineEdit::Password));
    row(u"rememberCheck"_s, "text", u"Kom ihåg mig i 30 dagar"_s);
    row(u"rememberCheck"_s, "styleSheet", u"color: #7070a0; font-size: 11px;"_s);
    row(u"rememberCheck"_s, "checked", false);
    row(u"authError"_s, "wordWrap", true);
    row(u"authError"_s, "alignment", static_cast<int>(Qt::AlignCenter));
    row(u"authError"_s, "visible", false);
    row(u"authError"_s, "text", QString());
    row(u"authDividerText"_s, "text", u"eller"_s);
    for (const QString &button : {u"primaryButton"_s, u"ghostButton"_s}) {
        row(button, "cursor", static_cast<int>(Qt::PointingHandCursor));
        row(button, "enabled", true);
    }
    row(u"primaryButton"_s, "minimumHeight", 40);
    row(u"ghostButton"_s, "minimumHeight", 36);
}

} // namespace

void TestSignInPage::rootIsTheGrid()
{
    const SignInProbe probe;
    QVERIFY(qobject_cast<tideloft::ui::GridWidget *>(probe.page));
}

void TestSignInPage::layouts_data()
{
    QTest::addColumn<QString>("owner"); // empty: the page
    QTest::addColumn<QString>("items");
    QTest::addColumn<QString>("spaces"); // "..." for margins that are not given
    QTest::newRow("page") << u""_s << u"#authTopbar #authCenter*1"_s << u"0 0 0 0, spacing 0"_s;
    QTest::newRow("topbar") << u"authTopbar"_s << u"#tbLogo #tbLogoName stretch #langCombo"_s
                            << u"16 0 16 0, spacing 8"_s;
    QTest::newRow("card") << u"authCard"_s
                          << u"[stretch #cardBrandIco stretch] 12 #authTitle #authSubtitle "
                             "[stretch #secBadge stretch] #authInput 8 #authInput 8 "
                             "[#rememberCheck(Kom ihåg mig i 30 dagar) stretch] 4 #authError 4 "
                             "#primaryButton(Logga in) 10 [#authDivider*1 #authDividerText #authDivider*1] "
                             "#ghostButton(Skapa konto)"_s
                          << u"..., spacing 0"_s;
    QTest::newRow("badge") << u"secBadge"_s << u"#secBadgeDot #secBadgeText"_s << u"..., spacing 6"_s;
}

void TestSignInPage::layouts()
{
    QFETCH(QString, owner);
    QFETCH(QString, spaces);
    const SignInProbe probe;
    const QWidget *widget = owner.isEmpty() ? probe.page : probe.the<QWidget>(owner);
    QTEST(itemsOf(widget), "items");
    if (spaces.startsWith(u"...,"_s))
        QCOMPARE(spacesOf(widget).section(u',', 1), spaces.section(u',', 1));
    else
        QCOMPARE(spacesOf(widget), spaces);
}

void TestSignInPage::properties_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("expected");
    topRows();
    fieldRows();
}

void TestSignInPage::properties()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const SignInProbe probe;
    QTEST(propertyOf(*named(*probe.page, widget), property), "expected");
}

void TestSignInPage::cardStandsInTheMiddle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("at the start") << QSize(1100, 720);
    QTest::newRow("smallest") << QSize(800, 560);
    QTest::newRow("large") << QSize(1600, 1000);
}

void TestSignInPage::cardStandsInTheMiddle()
{
    QFETCH(QSize, size);
    SignInProbe probe;
    probe.window.resize(size);
    const auto *card = probe.the<QWidget>(u"authCard"_s);
    const auto *center = probe.the<QWidget>(u"authCenter"_s);
    QTRY_COMPARE(probe.window.size(), size);
    const auto middle = [&] {
        return card->mapTo(center, QPoint()) * 2 + QPoint(card->width(), card->height());
    };
    QTRY_VERIFY(qAbs(middle().x() - center->width()) <= 2);
    QTRY_VERIFY(qAbs(middle().y() - center->height()) <= 2);
}

void TestSignInPage::dividersAreLines()
{
    const SignInProbe probe;
    const auto lines = probe.page->findChildren<QFrame *>(u"authDivider"_s);
    QCOMPARE(lines.size(), 2);
    for (const QFrame *line : lines)
        QCOMPARE(line->frameShape(), QFrame::HLine);
}

void TestSignInPage::oneLabelOutsideTheLayoutStaysHidden()
{
    const SignInProbe probe;
    const auto *card = probe.the<QWidget>(u"authCard"_s);
    QList<QLabel *> strays;
    for (auto *label : card->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (label->objectName().isEmpty())
            strays.append(label);
    }
    QCOMPARE(strays.size(), 1);
    QCOMPARE(card->layout()->indexOf(strays.first()), -1);
    QVERIFY(strays.first()->isHidden());
    QVERIFY(!probe.page->beginSignIn()); // an error
    QVERIFY(!probe.the<QLabel>(u"authError"_s)->isHidden());
    probe.page->admit(u"alice"_s);
    probe.page->clear();
    QVERIFY(strays.first()->isHidden());
}

void TestSignInPage::languagesInTheirOrder()
{
    const SignInProbe probe;
    const auto *combo = probe.the<QComboBox>(u"langCombo"_s);
    QCOMPARE(combo->count(), 2);
    QCOMPARE(combo->itemText(0), u"Svenska"_s);
    QCOMPARE(combo->itemText(1), u"English"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestSignInPage)
#include "tst_sign_in_page.moc"
