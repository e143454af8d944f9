// The names, roles and descriptions of the controls.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_accessible_table.h"

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

using enum QAccessible::Role;
using ui::LocalizedText;

LocalizedText same(const QString &text)
{
    return {text, text};
}

QList<Control> startControls()
{
    const LocalizedText userName{u"Användarnamn"_s, u"Username"_s};
    const LocalizedText password{u"Lösenord"_s, u"Password"_s};
    return {
        {"language", Button, same(u"🇸🇪   Svenska"_s)},
        {"language", Button, same(u"🇬🇧   English"_s)},
        {"sign-in", ComboBox, {u"Språk: Svenska"_s, u"Language: English"_s}},
        {"sign-in", EditableText, userName, userName},
        {"sign-in", EditableText, password, password},
        {"sign-in", CheckBox, same(u"Kom ihåg mig i 30 dagar"_s)}, // as it reads in either language
        {"sign-in", Button, {u"Logga in"_s, u"Sign in"_s}},
        {"sign-in", Button, {u"Skapa konto"_s, u"Create account"_s}},
    };
}

QList<Control> mainControls()
{
    const LocalizedText messages{u"Meddelanden"_s, u"Messages"_s};
    const LocalizedText settings{u"Inställningar"_s, u"Settings"_s};
    return {
        {"rail", CheckBox, messages, messages},
        {"rail", CheckBox, same(u"Harbour"_s), same(u"Server"_s)},
        {"rail", CheckBox, same(u"group-2"_s), same(u"Server"_s)}, // it has no name
        {"rail",
         Button,
         {u"Skapa server"_s, u"Create server"_s},
         {u"Skapa en ny server"_s, u"Create a new server"_s}},
        {"rail", CheckBox, settings, settings},
        {"sidebar", Button, {u"Ny konversation"_s, u"New conversation"_s}},
        {"sidebar",
         EditableText,
         {u"Sök eller starta konversation"_s, u"Search or start conversation"_s},
         {u"Sök eller starta konversation..."_s, u"Search or start conversation..."_s}},
        {"sidebar", List, {u"Sökresultat"_s, u"Search results"_s}},
        {"sidebar", List, {u"Konversationer"_s, u"Conversations"_s}},
        {"sidebar", ButtonMenu, {u"Kontomeny"_s, u"Account menu"_s}},
        {"sidebar", Button, same(u"Quillory"_s), {u"Integritetsinställningar"_s, u"Privacy settings"_s}},
        {"empty", Button, {u"➕  Starta ny konversation"_s, u"➕  Start new conversation"_s}},
        {"chat", List, {u"Historik"_s, u"History"_s}},
        {"chat",
         EditableText,
         {u"Meddelande"_s, u"Message"_s},
         {u"Skriv ett meddelande"_s, u"Write a message"_s}},
        {"chat", Button, {u"Skicka"_s, u"Send"_s}},
    };
}

QList<Control> accountControls()
{
    const LocalizedText aboutYourself{u"Skriv något om dig själv..."_s,
                                      u"Write something about yourself..."_s};
    return {
        {"settings", List, {u"Inställningar"_s, u"Settings"_s}},
        {"settings", Button, {u"←  Tillbaka till chatten"_s, u"←  Back to chat"_s}},
        {"Account", Grouping, {u"Konto"_s, u"Account"_s}},
        {"Account",
         Button,
         {u"Profilbild"_s, u"Profile picture"_s},
         {u"Klicka för att byta profilbild"_s, u"Click to change profile picture"_s}},
        {"Account", EditableText, {u"Visningsnamn"_s, u"Display name"_s}},
        {"Account", EditableText, same(u"Bio"_s), aboutYourself}, // of the profile
        {"Account", Button, {u"Spara ändringar"_s, u"Save changes"_s}},
        {"Account", EditableText, {u"Användarnamn"_s, u"Username"_s}},
        {"Account", EditableText, same(u"Bio"_s), aboutYourself}, // of the account
        {"Account", Button, {u"Ändra"_s, u"Change"_s}, {u"Ändra lösenord"_s, u"Change password"_s}},
        {"Account",
         Button,
         {u"Logga ut alla"_s, u"Log out all"_s},
         {u"Logga ut från alla enheter"_s, u"Log out from all devices"_s}},
    };
}

QList<Control> sectionControls()
{
    return {
        {"Privacy", Grouping, same(u"Privacy"_s)},
        {"Security", Grouping, {u"Säkerhet"_s, u"Security"_s}},
        {"Security", Button, {u"Visa alla"_s, u"View all"_s}, {u"Aktiva enheter"_s, u"Active devices"_s}},
        {"Security",
         Button,
         {u"Logga ut"_s, u"Log out"_s},
         {u"Logga ut alla andra sessioner"_s, u"Log out all other sessions"_s}},
        {"Notifications", Grouping, {u"Notiser"_s, u"Notifications"_s}},
        {"Chat", Grouping, {u"Chatt"_s, u"Chat"_s}},
        {"Advanced", Grouping, {u"Avancerat"_s, u"Advanced"_s}},
        {"Advanced", Button, {u"Rensa"_s, u"Clear"_s}, {u"Rensa lokal cache"_s, u"Clear local cache"_s}},
        {"Advanced",
         Button,
         {u"Återställ"_s, u"Reset"_s},
         {u"Återställ inställningar"_s, u"Reset settings"_s}},
        {"About", Grouping, {u"Om TideLoft"_s, u"About TideLoft"_s}},
    };
}

QList<Control> appearanceControls()
{
    const LocalizedText accent{u"Accentfärg"_s, u"Accent color"_s};
    return {
        {"Appearance", Grouping, {u"Utseende"_s, u"Appearance"_s}},
        {"Appearance", CheckBox, {u"Mörkt"_s, u"Dark"_s}},
        {"Appearance", CheckBox, {u"Ljust"_s, u"Light"_s}},
        {"Appearance", CheckBox, same(u"System"_s)},
        {"Appearance", Button, {u"Blå"_s, u"Blue"_s}, {u"Accentfärg, vald"_s, u"Accent color, chosen"_s}},
        {"Appearance", Button, {u"Violett"_s, u"Violet"_s}, accent},
        {"Appearance", Button, {u"Grön"_s, u"Green"_s}, accent},
        {"Appearance", Button, {u"Röd"_s, u"Red"_s}, accent},
        {"Appearance", Button, {u"Gul"_s, u"Amber"_s}, accent},
        {"Appearance", Button, {u"Rosa"_s, u"Pink"_s}, accent},
    };
}

QList<Control> dialogControls()
{
    return {
        {"create server",
         EditableText,
         {u"Servernamn"_s, u"Server name"_s},
         {u"t.ex. Mitt Community"_s, u"e.g. My Community"_s}},
        {"create server",
         EditableText,
         {u"Beskrivning (valfritt)"_s, u"Description (optional)"_s},
         {u"Beskriv din server..."_s, u"Describe your server..."_s}},
        {"create server", Button, {u"Avbryt"_s, u"Cancel"_s}},
        {"create server", Button, {u"Skapa server"_s, u"Create server"_s}},
        {"privacy",
         CheckBox,
         {u"Offentlig profil"_s, u"Public profile"_s},
         {u"Alla kan se din profil"_s, u"Anyone can view your profile"_s}},
        {"privacy",
         CheckBox,
         {u"Visa profilbild för alla"_s, u"Show profile picture to everyone"_s},
         {u"Annars bara för kontakter"_s, u"Otherwise only for contacts"_s}},
        {"privacy",
         CheckBox,
         {u"Visa online-status"_s, u"Show online status"_s},
         {u"Andra ser när du är aktiv"_s, u"Others see when you are active"_s}},
        {"privacy",
         CheckBox,
         {u"Tillåt DM från alla"_s, u"Allow DMs from everyone"_s},
         {u"Ta emot meddelanden från okända"_s, u"Receive messages from unknown users"_s}},
        {"privacy", Button, {u"Spara"_s, u"Save"_s}},
        {"box", StaticText, same(u"No."_s)}, // a click into it selects
        {"box", Button, same(u"OK"_s)},
        {"long box", EditableText, same(u"TideLoft"_s)},
        {"long box", Button, same(u"OK"_s)},
        {"user menu", MenuItem, {u"Profil"_s, u"Profile"_s}},
        {"user menu", MenuItem, {u"Inställningar"_s, u"Settings"_s}},
        {"user menu", MenuItem, {u"Logga ut"_s, u"Log out"_s}},
        {"server menu", MenuItem, {u"Ladda upp server-ikon"_s, u"Upload server icon"_s}},
        {"server menu", MenuItem, {u"Öppna server"_s, u"Open server"_s}},
    };
}

} // namespace

const QList<Control> &controls()
{
    static const QList<Control> all = startControls() + mainControls() + accountControls() + sectionControls()
                                      + appearanceControls() + dialogControls();
    return all;
}

} // namespace tideloft::tests
