// What a screen reader says of the window's controls.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/widgets/accessible_role.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

// Names for what has no text of its own, only a symbol or a placeholder.
void MainWindow::retranslateAccessibleNames()
{
    nameCombo(langCombo, text(u"Språk"_s, u"Language"_s));
    usernameField->setAccessibleName(text(u"Användarnamn"_s, u"Username"_s));
    passwordField->setAccessibleName(text(u"Lösenord"_s, u"Password"_s));
    railMessagesBtn->setAccessibleName(text(u"Meddelanden"_s, u"Messages"_s));
    serverColumn->setAccessibleName(text(u"Servrar"_s, u"Servers"_s));
    createServerBtn->setAccessibleName(text(u"Skapa server"_s, u"Create server"_s));
    railSettingsBtn->setAccessibleName(text(u"Inställningar"_s, u"Settings"_s));
    addDmBtn->setAccessibleName(text(u"Ny konversation"_s, u"New conversation"_s));
    sideSearch->setAccessibleName(
        text(u"Sök eller starta konversation"_s, u"Search or start conversation"_s));
    searchResults->setAccessibleName(text(u"Sökresultat"_s, u"Search results"_s));
    dmList->setAccessibleName(text(u"Konversationer"_s, u"Conversations"_s));
    messageList->setAccessibleName(text(u"Historik"_s, u"History"_s));
    msgInput->setAccessibleName(text(u"Meddelande"_s, u"Message"_s));
    sendButton->setAccessibleName(text(u"Skicka"_s, u"Send"_s));
    footerAvatar->setAccessibleName(text(u"Profilbild"_s, u"Profile picture"_s));
    footerAvatar->parentWidget()->setAccessibleName(text(u"Kontomeny"_s, u"Account menu"_s));
    retranslateAccessibleDescriptions();
}

// Without a description a screen reader falls back on tool tips and placeholders. Those that are set only
// once stay in the language of that moment; and "Quillory" alone tells nobody what it opens.
void MainWindow::retranslateAccessibleDescriptions()
{
    createServerBtn->setAccessibleDescription(text(u"Skapa en ny server"_s, u"Create a new server"_s));
    footerAvatar->setAccessibleDescription(
        text(u"Klicka för att ändra profilbild"_s, u"Click to change profile picture"_s));
    quilloryBtn->setAccessibleDescription(text(u"Integritetsinställningar"_s, u"Privacy settings"_s));
    msgInput->setAccessibleDescription(text(u"Skriv ett meddelande"_s, u"Write a message"_s));
}

} // namespace tideloft::ui
