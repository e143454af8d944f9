// Signing in, creating an account, logging out, and the language of the texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/accessible_role.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onLoginClicked()
{
    const QString username = usernameField->text().trimmed();
    const QString password = passwordField->text();
    if (username.isEmpty() || password.isEmpty()) {
        showAuthError(
            text(u"Fyll i användarnamn och lösenord."_s, u"Please enter your username and password."_s));
        return;
    }
    hideAuthError();
    if (username.toLower() != rememberedUser && !rememberedUser.isEmpty())
        rememberCheck->setChecked(false); // another user has ticked it
    setBusy(true);
    api.login(username, password, rememberCheck->isChecked());
}

void MainWindow::onLoginSucceeded(const QString &)
{
    api.fetchMe();
}

// Who has moved the keyboard meanwhile, to the language for example, keeps it there. A sign-in that follows a
// registration leaves it at the button.
void MainWindow::onLoginFailed(const QString &message)
{
    const QWidget *at = focusWidget();
    const bool isLeft = heldFocus.isWaiting() || at == primaryButton || at == ghostButton;
    setBusy(false);
    if (isLeft) {
        passwordField->setFocus();
        passwordField->selectAll();
    }
    showAuthError(message);
}

void MainWindow::onMeFailed(const QString &message)
{
    onLoginFailed(message);
}

void MainWindow::onRegisterClicked()
{
    const QString username = usernameField->text().trimmed();
    const QString password = passwordField->text();
    if (username.isEmpty() || password.isEmpty()) {
        showAuthError(
            text(u"Fyll i användarnamn och lösenord."_s, u"Please enter a username and password."_s));
        return;
    }
    hideAuthError();
    setBusy(true);
    ghostButton->setText(text(u"Skapar konto..."_s, u"Creating account..."_s));
    api.registerAccount(username, password);
}

// The account is made for the name that was sent, but the fields may have changed since: they hold what the
// person means now.
void MainWindow::onRegisterSucceeded(const QString &)
{
    setBusy(false);
    ghostButton->setText(text(u"Skapa konto"_s, u"Create account"_s));
    hideAuthError();
    api.login(usernameField->text().trimmed(), passwordField->text(), false);
}

void MainWindow::onRegisterFailed(const QString &message)
{
    setBusy(false);
    ghostButton->setText(text(u"Skapa konto"_s, u"Create account"_s));
    showAuthError(message);
}

void MainWindow::logOut()
{
    refreshTimer->stop();
    sealing.cancel();
    readingMemory.forget();
    forgetHistory();
    myDevices.endSignIn();
    api.forgetReplies();
    myUsername.clear();
    shownHistory.clear();
    usernameField->clear();
    passwordField->clear();
    hideAuthError();
    setBusy(false);
    rootStack->setCurrentWidget(authPage);
    usernameField->setFocus();
}

void MainWindow::setBusy(bool busy)
{
    const QList<QWidget *> controls{primaryButton, ghostButton, usernameField, passwordField};
    if (busy)
        heldFocus.take(controls, primaryButton->parentWidget());
    for (QWidget *control : controls)
        control->setEnabled(!busy);
    if (!busy)
        heldFocus.giveBack();
    primaryButton->setText(busy ? text(u"Loggar in..."_s, u"Signing in..."_s)
                                : text(u"Logga in"_s, u"Sign in"_s));
}

void MainWindow::showAuthError(const QString &message)
{
    notify(authError, firstPart(message, errorLimits));
}

void MainWindow::hideAuthError()
{
    authError->hide();
    authError->clear();
}

void MainWindow::retranslate()
{
    toolkitWords.speak(language());
    authTitle->setText(text(u"Välkommen tillbaka!"_s, u"Welcome back!"_s));
    authSubtitle->setText(text(u"Logga in eller skapa konto för att fortsätta."_s,
                               u"Sign in or create an account to continue."_s));
    usernameField->setPlaceholderText(text(u"Användarnamn"_s, u"Username"_s));
    passwordField->setPlaceholderText(text(u"Lösenord"_s, u"Password"_s));
    primaryButton->setText(text(u"Logga in"_s, u"Sign in"_s));
    ghostButton->setText(text(u"Skapa konto"_s, u"Create account"_s));
    sidebarTitle->setText(text(u"Meddelanden"_s, u"Messages"_s));
    sideSearch->setPlaceholderText(
        text(u"Sök eller starta konversation..."_s, u"Search or start conversation..."_s));
    if (railMessagesBtn)
        railMessagesBtn->setToolTip(text(u"Meddelanden"_s, u"Messages"_s));
    if (railSettingsBtn)
        railSettingsBtn->setToolTip(text(u"Inställningar"_s, u"Settings"_s));
    myStatus->setText(u"● Online"_s);
    if (emptyActionBtn)
        emptyActionBtn->setText(text(u"➕  Starta ny konversation"_s, u"➕  Start new conversation"_s));
    if (auto *title = emptyState->findChild<QLabel *>(u"emptyTitle"_s))
        title->setText(text(u"Välkommen till TideLoft"_s, u"Welcome to TideLoft"_s));
    if (auto *subtitle = emptyState->findChild<QLabel *>(u"emptySubtitle"_s))
        subtitle->setText(text(u"Välj en konversation eller starta en ny för att chatta säkert."_s,
                               u"Select a conversation or start a new one to chat securely."_s));
    retranslateAccessibleNames();
}

} // namespace tideloft::ui
