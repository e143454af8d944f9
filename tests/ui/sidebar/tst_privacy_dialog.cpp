// The privacy dialog of the sidebar's footer: four check boxes that are neither sent nor stored.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/page_window.h"
#include "tests/support/popups.h"
#include "tests/support/settings_parts.h"
#include "tests/support/tab_order.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "ui/sidebar/side_footer.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;
using tideloft::ui::LocalizedText;

class TestPrivacyDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void cards_data();
    void cards();
    void texts_data();
    void texts();
    void frame();
    void saveStandsAtTheRight();
    void saveAccepts();
    void escapeRejects();
    void alwaysStartsChecked();
    void neitherSentNorStored();
    void tabOrderFollowsReadingOrder();
};

namespace
{

struct Card {
    LocalizedText label;
    LocalizedText hint;
};

const QList<Card> &expectedCards()
{
    static const QList<Card> cards{
        {{u"Offentlig profil"_s, u"Public profile"_s},
         {u"Alla kan se din profil"_s, u"Anyone can view your profile"_s}},
        {{u"Visa profilbild för alla"_s, u"Show profile picture to everyone"_s},
         {u"Annars bara för kontakter"_s, u"Otherwise only for contacts"_s}},
        {{u"Visa online-status"_s, u"Show online status"_s},
         {u"Andra ser när du är aktiv"_s, u"Others see when you are active"_s}},
        {{u"Tillåt DM från alla"_s, u"Allow DMs from everyone"_s},
         {u"Ta emot meddelanden från okända"_s, u"Receive messages from unknown users"_s}},
    };
    return cards;
}

/// The sidebar's footer alone.
struct FooterProbe {
    explicit FooterProbe(Language language = Language::English)
        : footer(new tideloft::ui::SideFooter(language, &window))
    {
        window.showPage(footer);
    }

    PageWindow window{QSize(260, 58)};
    tideloft::ui::SideFooter *footer;
};

/// Opens the dialog from the footer; see withDialog().
bool withPrivacyDialog(const FooterProbe &probe, const std::function<void(QDialog &)> &use)
{
    return withDialog([&probe] { clickOnScreen(*only<QPushButton>(*probe.footer, u"quilloryBtn"_s)); }, use);
}

QList<QCheckBox *> boxesOf(const QDialog &dialog)
{
    return dialog.findChildren<QCheckBox *>();
}

QPushButton *saveOf(const QDialog &dialog)
{
    return only<QPushButton>(dialog, {});
}

} // namespace

void TestPrivacyDialog::cards_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("index");
    for (const Language language : {Language::English, Language::Swedish}) {
        for (int i = 0; i < expectedCards().size(); ++i)
            QTest::addRow("%d %s", i + 1, qPrintable(expectedCards().at(i).label.in(language)))
                << language << i;
    }
}

void TestPrivacyDialog::cards()
{
    QFETCH(Language, language);
    QFETCH(int, index);
    const Card &expected = expectedCards().at(index);
    const FooterProbe probe(language);
    const bool came = withPrivacyDialog(probe, [&](const QDialog &dialog) {
        QCOMPARE(boxesOf(dialog).size(), 4);
        const QCheckBox *box = boxesOf(dialog).at(index);
        QCOMPARE(box->text(), expected.label.in(language));
        QVERIFY(box->isChecked());
        const QWidget *card = box->parentWidget();
        QCOMPARE(card->styleSheet(), u"background: #111e2a; border-radius: 8px;"_s);
        QCOMPARE(spacesOf(card), u"14 12 14 12, spacing 4"_s);
        QCOMPARE(itemsOf(card), u"QCheckBox(%1) QLabel"_s.arg(box->text()));
        const QLabel *hint = labelWith(card, expected.hint.in(language));
        QCOMPARE(hint->styleSheet(), u"font-size: 10px; color: #5a7a9a; background: transparent;"_s);
        QVERIFY(hint->wordWrap());
    });
    QVERIFY(came);
}

void TestPrivacyDialog::texts_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("explanation");
    QTest::addColumn<QString>("save");
    QTest::newRow("English") << Language::English << u"Quillory — Privacy"_s << u"Privacy Settings"_s
                             << u"Control who can see your profile and details."_s << u"Save"_s;
    QTest::newRow("Swedish") << Language::Swedish << u"Quillory — Integritet"_s
                             << u"Integritetsinställningar"_s
                             << u"Styr vem som kan se din profil och dina uppgifter."_s << u"Spara"_s;
}

void TestPrivacyDialog::texts()
{
    QFETCH(Language, language);
    const FooterProbe probe(language);
    const bool came = withPrivacyDialog(probe, [](const QDialog &dialog) {
        QFETCH(QString, heading);
        QFETCH(QString, explanation);
        QTEST(dialog.windowTitle(), "title");
        QTEST(saveOf(dialog)->text(), "save");
        QCOMPARE(labelTexts(&dialog).mid(0, 2), (QStringList{heading, explanation}));
        QCOMPARE(labelWith(&dialog, heading)->styleSheet(),
                 u"font-size: 16px; font-weight: 700; color: #e8f0f8; background: transparent;"_s);
        QCOMPARE(labelWith(&dialog, explanation)->styleSheet(),
                 u"font-size: 11px; color: #5a7a9a; background: transparent;"_s);
    });
    QVERIFY(came);
}

void TestPrivacyDialog::frame()
{
    const FooterProbe probe;
    const bool came = withPrivacyDialog(probe, [&probe](const QDialog &dialog) {
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.parentWidget(), static_cast<const QWidget *>(&probe.window));
        QCOMPARE(propertyOf(dialog, "fixedWidth"), QVariant(400));
        QCOMPARE(dialog.styleSheet(),
                 u"QDialog { background: #0f1923; color: #e8f0f8; }"
                 "QLabel { color: #e8f0f8; background: transparent; }"
                 "QCheckBox { color: #e8f0f8; font-size: 13px; spacing: 8px; }"
                 "QCheckBox::indicator { width: 20px; height: 20px; border-radius: 5px; "
                 "border: 1px solid #2a4060; background: #0c151e; }"
                 "QCheckBox::indicator:checked { background: #3b8beb; border-color: #3b8beb; }"
                 "QPushButton { background: #3b8beb; color: #fff; border: none; border-radius: 7px; "
                 "padding: 8px 20px; font-size: 12px; font-weight: 600; }"
                 "QPushButton:hover { background: #5aa0f5; }"_s);
    });
    QVERIFY(came);
    QVERIFY(probe.window.findChildren<QDialog *>().isEmpty()); // each opening makes its own
}

void TestPrivacyDialog::saveStandsAtTheRight()
{
    const FooterProbe probe;
    const bool came = withPrivacyDialog(probe, [](const QDialog &dialog) {
        QCOMPARE(itemsOf(&dialog),
                 u"QLabel QLabel QWidget QWidget QWidget QWidget [stretch QPushButton(Save)]"_s);
        const QRect card = boxesOf(dialog).constFirst()->parentWidget()->geometry();
        QCOMPARE(saveOf(dialog)->geometry().right(), card.right());
    });
    QVERIFY(came);
}

void TestPrivacyDialog::saveAccepts()
{
    const FooterProbe probe;
    int result = -1;
    const bool came = withPrivacyDialog(probe, [&result](QDialog &dialog) {
        QTest::mouseClick(saveOf(dialog), Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
        result = dialog.result();
    });
    QVERIFY(came);
    QCOMPARE(result, int(QDialog::Accepted));
}

void TestPrivacyDialog::escapeRejects()
{
    const FooterProbe probe;
    int result = -1;
    const bool came = withPrivacyDialog(probe, [&result](QDialog &dialog) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        result = dialog.result();
    });
    QVERIFY(came);
    QCOMPARE(result, int(QDialog::Rejected));
}

void TestPrivacyDialog::alwaysStartsChecked()
{
    const FooterProbe probe;
    QVERIFY(withPrivacyDialog(probe, [](const QDialog &dialog) {
        for (QCheckBox *box : boxesOf(dialog))
            box->click();
        QTest::mouseClick(saveOf(dialog), Qt::LeftButton);
    }));
    const bool cameAgain = withPrivacyDialog(probe, [](const QDialog &dialog) {
        for (const QCheckBox *box : boxesOf(dialog))
            QVERIFY(box->isChecked());
    });
    QVERIFY(cameAgain);
}

void TestPrivacyDialog::neitherSentNorStored()
{
    const FooterProbe probe;
    QVERIFY(withPrivacyDialog(probe, [](const QDialog &dialog) {
        for (QCheckBox *box : boxesOf(dialog))
            box->click();
        QTest::mouseClick(saveOf(dialog), Qt::LeftButton);
    }));
    QCOMPARE(probe.window.sentSignals(), 0);
    QCOMPARE(QSettings().allKeys(), QStringList());
}

void TestPrivacyDialog::tabOrderFollowsReadingOrder()
{
    const FooterProbe probe;
    QStringList order;
    const bool came = withPrivacyDialog(
        probe, [&order](const QDialog &dialog) { order = tabOrder(&dialog, boxesOf(dialog).constFirst()); });
    QVERIFY(came);
    QCOMPARE(order, (QStringList{u"Public profile"_s, u"Show profile picture to everyone"_s,
                                 u"Show online status"_s, u"Allow DMs from everyone"_s, u"Save"_s}));
}

TIDELOFT_GUI_TEST_MAIN(TestPrivacyDialog)
#include "tst_privacy_dialog.moc"
