// The texts and initial states of the settings' switches.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_switches.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QList<SwitchGroup> privacySwitches()
{
    return {
        {{u"SYNLIGHET"_s, u"VISIBILITY"_s},
         {
             {{u"Visa online-status"_s, u"Show online status"_s},
              {u"Låt andra se när du är online"_s, u"Let others see when you are online"_s},
              true},
             {{u"Visa senaste aktivitet"_s, u"Show last activity"_s},
              {u"Visa när du senast var aktiv"_s, u"Show when you were last active"_s},
              false},
             {{u"Offentlig profil"_s, u"Public profile"_s},
              {u"Låt vem som helst se din profil"_s, u"Let anyone view your profile"_s},
              true},
         }},
        {{u"MEDDELANDEN"_s, u"MESSAGES"_s},
         {
             {{u"Tillåt DM från alla"_s, u"Allow DMs from everyone"_s},
              {u"Ta emot direktmeddelanden från okända användare"_s, u"Receive DMs from unknown users"_s},
              true},
             {{u"Läskvitton"_s, u"Read receipts"_s},
              {u"Visa när du har läst ett meddelande"_s, u"Show when you have read a message"_s},
              true},
             {{u"Skrivindikator"_s, u"Typing indicator"_s},
              {u"Visa när du skriver ett meddelande"_s, u"Show when you are typing"_s},
              true},
         }},
        {{u"KONTAKTER"_s, u"CONTACTS"_s},
         {
             {{u"Tillåt vänförfrågningar"_s, u"Allow friend requests"_s},
              {u"Ta emot förfrågningar från alla"_s, u"Receive requests from anyone"_s},
              true},
         }},
    };
}

QList<SwitchGroup> notificationSwitches()
{
    return {
        {{u"DESKTOP-NOTISER"_s, u"DESKTOP NOTIFICATIONS"_s},
         {
             {{u"Aktivera notiser"_s, u"Enable notifications"_s},
              {u"Visa notiser på skrivbordet"_s, u"Show notifications on desktop"_s},
              true},
             {{u"Ljud"_s, u"Sound"_s},
              {u"Spela upp ljud vid notiser"_s, u"Play sound for notifications"_s},
              true},
             {{u"Stör ej"_s, u"Do not disturb"_s},
              {u"Tysta alla notiser"_s, u"Mute all notifications"_s},
              false},
         }},
        {{u"NOTISTYPER"_s, u"NOTIFICATION TYPES"_s},
         {
             {{u"Direktmeddelanden"_s, u"Direct messages"_s},
              {u"Notiser för nya DM"_s, u"Notifications for new DMs"_s},
              true},
             {{u"Grupper"_s, u"Groups"_s},
              {u"Notiser för gruppchattar"_s, u"Notifications for group chats"_s},
              true},
             {{u"Omnämnanden"_s, u"Mentions"_s},
              {u"Notiser när någon nämner dig"_s, u"Notifications when someone mentions you"_s},
              true},
         }},
        {{u"BETEENDE"_s, u"BEHAVIOR"_s},
         {
             {{u"Notiser i bakgrunden"_s, u"Background notifications"_s},
              {u"Visa notiser när appen är minimerad"_s, u"Show notifications when app is minimized"_s},
              true},
             {{u"Starta i system tray"_s, u"Start in system tray"_s},
              {u"Kör appen i bakgrunden vid start"_s, u"Run app in background on startup"_s},
              false},
         }},
    };
}

QList<SwitchGroup> chatSwitches()
{
    return {
        {{u"MEDDELANDEN"_s, u"MESSAGES"_s},
         {
             {{u"Skicka med Enter"_s, u"Send with Enter"_s},
              {u"Radbryt med Shift+Enter"_s, u"New line with Shift+Enter"_s},
              true},
             {{u"Förhandsvisning av länkar"_s, u"Link previews"_s},
              {u"Visa förhandsgranskning av länkar"_s, u"Show preview of links"_s},
              true},
             {{u"Visa bilder automatiskt"_s, u"Show images automatically"_s},
              {u"Ladda och visa bilder i chatten"_s, u"Load and display images in chat"_s},
              true},
             {{u"Spara utkast"_s, u"Save drafts"_s},
              {u"Spara oavsända meddelanden"_s, u"Save unsent messages"_s},
              true},
         }},
        {{u"VISNING"_s, u"DISPLAY"_s},
         {
             {{u"Kompakt läge"_s, u"Compact mode"_s},
              {u"Visa fler meddelanden på skärmen"_s, u"Show more messages on screen"_s},
              false},
             {{u"24-timmarsformat"_s, u"24-hour format"_s},
              {u"Visa tid i 24h-format"_s, u"Display time in 24h format"_s},
              true},
             {{u"Visa användar-ID"_s, u"Show user ID"_s},
              {u"Visa techniska ID:n i profiler"_s, u"Show technical IDs in profiles"_s},
              false},
         }},
    };
}

QList<SwitchGroup> securitySwitches()
{
    return {
        {{u"TVÅFAKTORSAUTENTISERING"_s, u"TWO-FACTOR AUTH"_s},
         {
             {{u"2FA aktiverad"_s, u"2FA enabled"_s},
              {u"Skydda ditt konto med en autentiseringsapp"_s,
               u"Protect your account with an authenticator app"_s},
              false},
         }},
    };
}

QList<SwitchGroup> advancedSwitches()
{
    return {
        {{u"PRESTANDA"_s, u"PERFORMANCE"_s},
         {
             {{u"Hårdvaruacceleration"_s, u"Hardware acceleration"_s},
              {u"Använd GPU för rendering"_s, u"Use GPU for rendering"_s},
              true},
             {{u"Starta med Windows"_s, u"Start with Windows"_s},
              {u"Starta automatiskt vid inloggning"_s, u"Start automatically at login"_s},
              false},
             {{u"Minimera till system tray"_s, u"Minimize to system tray"_s},
              {u"Kör i bakgrunden istället för att stängas"_s, u"Run in background instead of closing"_s},
              false},
         }},
        {{u"UTVECKLARE"_s, u"DEVELOPER"_s},
         {
             {{u"Utvecklarläge"_s, u"Developer mode"_s},
              {u"Aktivera tekniska inställningar och debug-info"_s,
               u"Enable technical settings and debug info"_s},
              false},
         }},
    };
}

QList<SwitchGroup> appearanceSwitches()
{
    return {
        {{u"EFFEKTER"_s, u"EFFECTS"_s},
         {
             {{u"Animeringar"_s, u"Animations"_s},
              {u"Aktivera UI-animeringar"_s, u"Enable UI animations"_s},
              true},
             {{u"Transparenseffekter"_s, u"Transparency effects"_s},
              {u"Aktivera genomskinlighetseffekter"_s, u"Enable transparency effects"_s},
              false},
             {{u"Rundade hörn"_s, u"Rounded corners"_s},
              {u"Använd rundade hörn i UI"_s, u"Use rounded corners in UI"_s},
              true},
         }},
    };
}

} // namespace tideloft::ui
