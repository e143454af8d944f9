// The six rows of the settings whose button shows a message, and nothing else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;
using tideloft::ui::LocalizedText;

class TestSettingsRows : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void looks_data() { addRows(); }
    void looks();
    void everyClickShowsTheBox_data() { addRows(); }
    void everyClickShowsTheBox();
    void boxSpeaksTheLanguageOfTheMoment_data() { addRows(); }
    void boxSpeaksTheLanguageOfTheMoment();

private:
    static void addRows();
};

namespace
{

enum class Look { Usual, Danger };

struct ActionRow {
    Section section = Account;
    LocalizedText header;
    LocalizedText label;
    LocalizedText button;
    Look look = Look::Usual;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    LocalizedText message;
};

const QList<ActionRow> actions{
    {Account,
     {u"LÖSENORD"_s, u"PASSWORD"_s},
     {u"Ändra lösenord"_s, u"Change password"_s},
     {u"Ändra"_s, u"Change"_s},
     Look::Usual,
     QMessageBox::Information,
     {u"Öppnar lösenordsändring..."_s, u"Opening password change..."_s}},
    {Account,
     {u"KONTO"_s, u"ACCOUNT"_s},
     {u"Logga ut från alla enheter"_s, u"Log out from all devices"_s},
     {u"Logga ut alla"_s, u"Log out all"_s},
     Look::Danger,
     QMessageBox::Warning,
     {u"Loggar ut alla sessioner..."_s, u"Logging out all sessions..."_s}},
    {Security,
     {u"ENHETER"_s, u"DEVICES"_s},
     {u"Aktiva enheter"_s, u"Active devices"_s},
     {u"Visa alla"_s, u"View all"_s},
     Look::Usual,
     QMessageBox::Information,
     {u"Visar aktiva enheter..."_s, u"Showing active devices..."_s}},
    {Security,
     {u"ENHETER"_s, u"DEVICES"_s},
     {u"Logga ut alla andra sessioner"_s, u"Log out all other sessions"_s},
     {u"Logga ut"_s, u"Log out"_s},
     Look::Danger,
     QMessageBox::Warning,
     {u"Logging out all sessions..."_s, u"Logging out all sessions..."_s}}, // English in both
    {Advanced,
     {u"UTVECKLARE"_s, u"DEVELOPER"_s},
     {u"Rensa lokal cache"_s, u"Clear local cache"_s},
     {u"Rensa"_s, u"Clear"_s},
     Look::Usual,
     QMessageBox::Information,
     {u"Cache rensad."_s, u"Cache cleared."_s}},
    {Advanced,
     {u"UTVECKLARE"_s, u"DEVELOPER"_s},
     {u"Återställ inställningar"_s, u"Reset settings"_s},
     {u"Återställ"_s, u"Reset"_s},
     Look::Danger,
     QMessageBox::Warning,
     {u"Återställer..."_s, u"Resetting..."_s}},
};

QString buttonStyle(Look look)
{
    return look == Look::Danger
               ? u"background: #2a1a1a; color: #ef4444; border: 1px solid #4a2020; border-radius: 6px; "
                 "font-size: 12px; padding: 0 16px;"_s
               : u"background: #1a2e40; color: #7ab0f5; border: 1px solid #2a4060; border-radius: 6px; "
                 "font-size: 12px; padding: 0 16px;"_s;
}

} // namespace

void TestSettingsRows::addRows()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("index");
    for (const Language language : {Language::English, Language::Swedish}) {
        for (int i = 0; i < actions.size(); ++i)
            QTest::addRow("%s", qPrintable(actions.at(i).label.in(language))) << language << i;
    }
}

void TestSettingsRows::looks()
{
    QFETCH(Language, language);
    QFETCH(int, index);
    const ActionRow &expected = actions.at(index);
    const SettingsPageProbe probe(language);
    const QWidget *row = probe.row(expected.section, expected.label.in(language));
    QCOMPARE(headerAbove(row), expected.header.in(language));
    QCOMPARE(row->minimumHeight(), 52);
    QVERIFY(spacesOf(row).startsWith(u"16 12 16 12,"_s));
    QCOMPARE(itemsOf(row), u"QLabel*1 QPushButton(%1)"_s.arg(expected.button.in(language)));
    QCOMPARE(labelTexts(row), QStringList{expected.label.in(language)});
    QCOMPARE(row->findChild<QLabel *>()->styleSheet(),
             u"color: #e8f0f8; font-size: 13px; background: transparent;"_s);

    const QPushButton *button = row->findChild<QPushButton *>();
    QCOMPARE(propertyOf(*button, "fixedHeight"), QVariant(32));
    QCOMPARE(button->minimumWidth(), 120);
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button->styleSheet(), buttonStyle(expected.look));
}

void TestSettingsRows::everyClickShowsTheBox()
{
    QFETCH(Language, language);
    QFETCH(int, index);
    const ActionRow &expected = actions.at(index);
    const SettingsPageProbe probe(language);
    probe.clickRow(expected.section);
    auto *button = probe.row(expected.section, expected.label.in(language))->findChild<QPushButton *>();
    for (int click = 0; click < 2; ++click) {
        QTest::mouseClick(button, Qt::LeftButton);
        QTRY_COMPARE(probe.window.findChildren<QMessageBox *>().size(), 1);
        auto *box = probe.window.findChild<QMessageBox *>();
        QTRY_VERIFY(box->isVisible());
        QVERIFY(box->isModal());
        QCOMPARE(box->parentWidget(), static_cast<const QWidget *>(&probe.window));
        QCOMPARE(box->windowTitle(), u"TideLoft"_s);
        QCOMPARE(box->text(), expected.message.in(language));
        QCOMPARE(box->icon(), expected.icon);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTRY_VERIFY(probe.window.findChildren<QMessageBox *>().isEmpty());
    }
    QCOMPARE(probe.window.sentSignals(), 0);
    QCOMPARE(QSettings().allKeys(), QStringList());
}

// Who logs out may choose the other language before signing in again: the page stays as it was made.
void TestSettingsRows::boxSpeaksTheLanguageOfTheMoment()
{
    QFETCH(Language, language);
    QFETCH(int, index);
    const ActionRow &expected = actions.at(index);
    const Language other = language == Language::English ? Language::Swedish : Language::English;
    const SettingsPageProbe probe(language);
    const QWidget *row = probe.row(expected.section, expected.label.in(language));
    for (const Language moment : {other, language}) {
        probe.page->retranslate(moment);
        row->findChild<QPushButton *>()->click();
        const QPointer box = probe.window.findChild<QMessageBox *>();
        QVERIFY(box);
        QCOMPARE(box->text(), expected.message.in(moment));
        box->accept();
        QTRY_VERIFY(!box);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestSettingsRows)
#include "tst_settings_rows.moc"
