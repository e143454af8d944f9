// What stands in each section of the settings, from top to bottom.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QLayout>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestSettingsSections : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void outline_data();
    void outline();
    void titleAndHeaderLooks();
};

namespace
{

struct OutlineRow {
    Section section = Account;
    QStringList english;
    QStringList swedish;
};

const QList<OutlineRow> outlines{
    {Account,
     {u"Account"_s, u"card()"_s, u"# ACCOUNT INFO"_s, u"card(Username, Bio)"_s, u"# PASSWORD"_s,
      u"card(Change password)"_s, u"# ACCOUNT"_s, u"card(Log out from all devices)"_s},
     {u"Konto"_s, u"card()"_s, u"# KONTOINFORMATION"_s, u"card(Användarnamn, Bio)"_s, u"# LÖSENORD"_s,
      u"card(Ändra lösenord)"_s, u"# KONTO"_s, u"card(Logga ut från alla enheter)"_s}},
    {Privacy,
     {u"Privacy"_s, u"# VISIBILITY"_s, u"card(Show online status, Show last activity, Public profile)"_s,
      u"# MESSAGES"_s, u"card(Allow DMs from everyone, Read receipts, Typing indicator)"_s, u"# CONTACTS"_s,
      u"card(Allow friend requests)"_s},
     {u"Privacy"_s, u"# SYNLIGHET"_s, u"card(Visa online-status, Visa senaste aktivitet, Offentlig profil)"_s,
      u"# MEDDELANDEN"_s, u"card(Tillåt DM från alla, Läskvitton, Skrivindikator)"_s, u"# KONTAKTER"_s,
      u"card(Tillåt vänförfrågningar)"_s}},
    {Security,
     {u"Security"_s, u"card()"_s, u"# TWO-FACTOR AUTH"_s, u"card(2FA enabled)"_s, u"# DEVICES"_s,
      u"card(Active devices, Log out all other sessions)"_s, u"# RECENT ACTIVITY"_s, u"card()"_s},
     {u"Säkerhet"_s, u"card()"_s, u"# TVÅFAKTORSAUTENTISERING"_s, u"card(2FA aktiverad)"_s, u"# ENHETER"_s,
      u"card(Aktiva enheter, Logga ut alla andra sessioner)"_s, u"# SENASTE AKTIVITET"_s, u"card()"_s}},
    {Notifications,
     {u"Notifications"_s, u"# DESKTOP NOTIFICATIONS"_s,
      u"card(Enable notifications, Sound, Do not disturb)"_s, u"# NOTIFICATION TYPES"_s,
      u"card(Direct messages, Groups, Mentions)"_s, u"# BEHAVIOR"_s,
      u"card(Background notifications, Start in system tray)"_s},
     {u"Notiser"_s, u"# DESKTOP-NOTISER"_s, u"card(Aktivera notiser, Ljud, Stör ej)"_s, u"# NOTISTYPER"_s,
      u"card(Direktmeddelanden, Grupper, Omnämnanden)"_s, u"# BETEENDE"_s,
      u"card(Notiser i bakgrunden, Starta i system tray)"_s}},
    {Chat,
     {u"Chat"_s, u"# MESSAGES"_s,
      u"card(Send with Enter, Link previews, Show images automatically, Save drafts)"_s, u"# DISPLAY"_s,
      u"card(Compact mode, 24-hour format, Show user ID)"_s},
     {u"Chatt"_s, u"# MEDDELANDEN"_s,
      u"card(Skicka med Enter, Förhandsvisning av länkar, Visa bilder automatiskt, Spara utkast)"_s,
      u"# VISNING"_s, u"card(Kompakt läge, 24-timmarsformat, Visa användar-ID)"_s}},
    {Appearance,
     {u"Appearance"_s, u"# THEME"_s, u"card()"_s, u"# ACCENT COLOR"_s, u"card()"_s, u"# EFFECTS"_s,
      u"card(Animations, Transparency effects, Rounded corners)"_s},
     {u"Utseende"_s, u"# TEMA"_s, u"card()"_s, u"# ACCENTFÄRG"_s, u"card()"_s, u"# EFFEKTER"_s,
      u"card(Animeringar, Transparenseffekter, Rundade hörn)"_s}},
    {Advanced,
     {u"Advanced"_s, u"# PERFORMANCE"_s,
      u"card(Hardware acceleration, Start with Windows, Minimize to system tray)"_s, u"# DEVELOPER"_s,
      u"card(Developer mode, Clear local cache, Reset settings)"_s},
     {u"Avancerat"_s, u"# PRESTANDA"_s,
      u"card(Hårdvaruacceleration, Starta med Windows, Minimera till system tray)"_s, u"# UTVECKLARE"_s,
      u"card(Utvecklarläge, Rensa lokal cache, Återställ inställningar)"_s}},
    {About,
     {u"box"_s, u"TideLoft"_s, QStringLiteral("Version " TIDELOFT_VERSION), u"Private. Secure. Fast."_s,
      u"card()"_s},
     {u"box"_s, u"TideLoft"_s, QStringLiteral("Version " TIDELOFT_VERSION), u"Privat. Säker. Snabb."_s,
      u"card()"_s}},
};

} // namespace

void TestSettingsSections::outline_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("section");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](Section section, const QStringList &english, const QStringList &swedish) {
        QTest::addRow("%s English", qPrintable(english.first()))
            << Language::English << int(section) << english + QStringList{u"stretch"_s};
        QTest::addRow("%s Swedish", qPrintable(english.first()))
            << Language::Swedish << int(section) << swedish + QStringList{u"stretch"_s};
    };
    for (const OutlineRow &outline : outlines)
        row(outline.section, outline.english, outline.swedish);
}

void TestSettingsSections::outline()
{
    QFETCH(Language, language);
    QFETCH(int, section);
    const SettingsPageProbe probe(language);
    QTEST(probe.outline(section), "expected");
}

void TestSettingsSections::titleAndHeaderLooks()
{
    const SettingsPageProbe probe;
    for (int i = Account; i < About; ++i) {
        const auto *title = qobject_cast<const QLabel *>(probe.content(i)->layout()->itemAt(0)->widget());
        QCOMPARE(title->styleSheet(),
                 u"color: #e8f0f8; font-size: 20px; font-weight: 700; background: transparent;"_s);
    }
    const auto headers = probe.settingsPage()->findChildren<QWidget *>(u"settingsSectionHeader"_s);
    QCOMPARE(headers.size(), 19);
    for (const QWidget *header : headers) {
        const auto *caption = qobject_cast<const QLabel *>(header->layout()->itemAt(0)->widget());
        QCOMPARE(caption->styleSheet(),
                 u"color: #7ab0f5; font-size: 11px; font-weight: 700; letter-spacing: 1px; "
                 "background: transparent;"_s);
        QCOMPARE(caption->text(), caption->text().toUpper());
        const auto *rule = qobject_cast<const QFrame *>(header->layout()->itemAt(1)->widget());
        QCOMPARE(rule->styleSheet(), u"background: #1a2d40; max-height: 1px; border: none;"_s);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestSettingsSections)
#include "tst_settings_sections.moc"
