// The sign-in page: what it asks for, what it says, and who gets the keyboard.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sign_in/sign_in_page.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/accessible_role.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

Language SignInPage::language() const
{
    return languageFromIndex(langCombo->currentIndex());
}

void SignInPage::setLanguageIndex(int index)
{
    langCombo->setCurrentIndex(index);
}

QString SignInPage::text(const QString &swedish, const QString &english) const
{
    return chooseText(language(), swedish, english);
}

void SignInPage::retranslate()
{
    authTitle->setText(text(u"Välkommen tillbaka!"_s, u"Welcome back!"_s));
    authSubtitle->setText(text(u"Logga in eller skapa konto för att fortsätta."_s,
                               u"Sign in or create an account to continue."_s));
    usernameField->setPlaceholderText(text(u"Användarnamn"_s, u"Username"_s));
    passwordField->setPlaceholderText(text(u"Lösenord"_s, u"Password"_s));
    primaryButton->setText(text(u"Logga in"_s, u"Sign in"_s));
    ghostButton->setText(text(u"Skapa konto"_s, u"Create account"_s));
    nameCombo(langCombo, text(u"Språk"_s, u"Language"_s));
    usernameField->setAccessibleName(text(u"Användarnamn"_s, u"Username"_s));
    passwordField->setAccessibleName(text(u"Lösenord"_s, u"Password"_s));
}

Credentials SignInPage::typed() const
{
    return {usernameField->text().trimmed(), passwordField->text(), rememberCheck->isChecked()};
}

std::optional<Credentials> SignInPage::beginSignIn()
{
    const QString username = typed().username;
    if (username.isEmpty() || passwordField->text().isEmpty()) {
        showError(
            text(u"Fyll i användarnamn och lösenord."_s, u"Please enter your username and password."_s));
        return {};
    }
    hideError();
    if (username.toLower() != rememberedUser && !rememberedUser.isEmpty())
        rememberCheck->setChecked(false); // another user has ticked it
    setBusy(true);
    return typed();
}

std::optional<Credentials> SignInPage::beginRegistration()
{
    if (typed().username.isEmpty() || passwordField->text().isEmpty()) {
        showError(text(u"Fyll i användarnamn och lösenord."_s, u"Please enter a username and password."_s));
        return {};
    }
    hideError();
    setBusy(true);
    ghostButton->setText(text(u"Skapar konto..."_s, u"Creating account..."_s));
    return typed();
}

Credentials SignInPage::endRegistration()
{
    setBusy(false);
    ghostButton->setText(text(u"Skapa konto"_s, u"Create account"_s));
    hideError();
    return typed();
}

void SignInPage::refuseRegistration(const QString &message)
{
    endRegistration();
    showError(message);
}

// The password gets the keyboard, unless the user has moved the keyboard meanwhile, for example to the
// language. After a registration the keyboard is at a button, where the user has not moved it.
void SignInPage::refuseSignIn(const QString &message)
{
    const QWidget *at = window()->focusWidget();
    const bool isLeft = heldFocus.isWaiting() || at == primaryButton || at == ghostButton;
    setBusy(false);
    if (isLeft) {
        passwordField->setFocus();
        passwordField->selectAll();
    }
    showError(message);
}

void SignInPage::admit(const QString &username)
{
    setBusy(false);
    rememberedUser = rememberCheck->isChecked() ? username : QString();
}

void SignInPage::clear()
{
    usernameField->clear();
    passwordField->clear();
    hideError();
    setBusy(false);
}

void SignInPage::focusFirst()
{
    usernameField->setFocus();
}

void SignInPage::setBusy(bool busy)
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

void SignInPage::showError(const QString &message)
{
    notify(authError, firstPart(message, errorLimits));
}

void SignInPage::hideError()
{
    authError->hide();
    authError->clear();
}

// The check mark is the choice of one user. It is removed as soon as TYPEDNAME cannot become that user's name
// any more.
void SignInPage::keepRememberCheckFor(const QString &typedName)
{
    if (rememberedUser.isEmpty() || rememberedUser.startsWith(typedName.trimmed().toLower()))
        return;
    rememberCheck->setChecked(false);
}

} // namespace tideloft::ui
