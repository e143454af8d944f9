// The sign-in page: language, user name, password, and the two ways in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/keyboard/held_focus.h"
#include "ui/style/grid_widget.h"
#include "ui/texts/text.h"

#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace tideloft::ui
{

/// What a person signs in with: the name trimmed, the password as it was typed.
struct Credentials {
    QString username;
    QString password;
    bool remember = false;
};

/// Holds the choice of the language for the whole window.
class SignInPage : public GridWidget
{
    Q_OBJECT

public:
    /// An empty page, which can join its stack at no cost; build() fills it.
    explicit SignInPage(QWidget *parent) : GridWidget(parent) {}
    void build();

    [[nodiscard]] Language language() const;
    void setLanguageIndex(int index);
    void retranslate();

    /// What is typed, and the page busy from now on; nothing, and an error on the page, if a field is empty.
    std::optional<Credentials> beginSignIn();
    /// The same for a new account.
    std::optional<Credentials> beginRegistration();
    /// What is typed now, after an account was made: the account is made for what was sent, but the fields
    /// hold what the person means now.
    Credentials endRegistration();
    void refuseRegistration(const QString &message);
    /// Shows MESSAGE, and gives the keyboard to the password unless the person has moved it meanwhile.
    void refuseSignIn(const QString &message);
    /// USERNAME has signed in. The tick of "Remember me" is this user's from now on.
    void admit(const QString &username);
    /// Empties the page for whoever comes next.
    void clear();
    /// Gives the keyboard to the first field.
    void focusFirst();

signals:
    void signInClicked();
    void registerClicked();
    void languageChanged();

private:
    [[nodiscard]] QString text(const QString &swedish, const QString &english) const;
    QWidget *makeTopbar();
    QWidget *makeCenter();
    QWidget *makeCard(QWidget *center);
    void addHeading(QWidget *card, QVBoxLayout *column);
    void addFields(QWidget *card, QVBoxLayout *column);
    void addButtons(QWidget *card, QVBoxLayout *column);
    void connectParts();
    [[nodiscard]] Credentials typed() const;
    void setBusy(bool busy);
    void showError(const QString &message);
    void hideError();
    void keepRememberCheckFor(const QString &typedName);

    QComboBox *langCombo = nullptr;
    QLabel *authTitle = nullptr;
    QLabel *authSubtitle = nullptr;
    QLineEdit *usernameField = nullptr;
    QLineEdit *passwordField = nullptr;
    QCheckBox *rememberCheck = nullptr;
    QPushButton *primaryButton = nullptr;
    QPushButton *ghostButton = nullptr;
    QLabel *authError = nullptr;
    HeldFocus heldFocus;    ///< while the page is busy
    QString rememberedUser; ///< for whom "Remember me" was ticked; empty once the user has changed the box
};

} // namespace tideloft::ui
