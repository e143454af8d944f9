// The sign-in page: how it is put together. What it does is in sign_in_page_flow.cpp.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sign_in/sign_in_page.h"

#include "ui/keyboard/composition_keys.h"
#include "ui/style/sign_in_styles.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/error_label.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

/// A line that keeps WIDGET in its middle.
QHBoxLayout *centred(QWidget *widget)
{
    auto *layout = new QHBoxLayout;
    layout->setSpacing(0);
    layout->addStretch();
    layout->addWidget(widget);
    layout->addStretch();
    return layout;
}

QWidget *makeSecurityBadge(QWidget *card)
{
    auto *badge = makeBox(card, u"secBadge"_s);
    auto *layout = new QHBoxLayout(badge);
    layout->setContentsMargins(12, 3, 12, 3);
    layout->setSpacing(6);
    auto *dot = makeLabel({}, badge, u"secBadgeDot"_s);
    dot->setFixedSize(6, 6);
    layout->addWidget(dot);
    layout->addWidget(makeLabel(u"End-to-end encrypted · TLS 1.3"_s, badge, u"secBadgeText"_s));
    return badge;
}

QLineEdit *makeAuthField(QLineEdit *field)
{
    field->setObjectName(u"authInput"_s);
    field->setMinimumHeight(38);
    return field;
}

QHBoxLayout *makeDivider(const QString &word, QWidget *card)
{
    auto *layout = new QHBoxLayout;
    layout->addWidget(makeRule(card, u"authDivider"_s), 1);
    layout->addWidget(makeLabel(word, card, u"authDividerText"_s));
    layout->addWidget(makeRule(card, u"authDivider"_s), 1);
    return layout;
}

} // namespace

void SignInPage::build()
{
    auto *column = makeColumnLayout(this);
    column->addWidget(makeTopbar());
    column->addWidget(makeCenter(), 1);
    connectParts();
}

QWidget *SignInPage::makeTopbar()
{
    auto *topbar = makeBox(this, u"authTopbar"_s);
    topbar->setFixedHeight(40);
    auto *layout = makeRowLayout(topbar, 8);
    layout->setContentsMargins(16, 0, 16, 0);
    auto *logo = makeLabel(u"TL"_s, topbar, u"tbLogo"_s);
    logo->setFixedSize(24, 24);
    logo->setAlignment(Qt::AlignCenter);
    langCombo = new QComboBox(topbar);
    langCombo->setObjectName(u"langCombo"_s);
    setAccessibleRole(langCombo, QAccessible::ComboBox); // before its entries make it speak
    ringFocus(langCombo);
    langCombo->setFixedWidth(120);
    langCombo->addItems({u"Svenska"_s, u"English"_s});
    layout->addWidget(logo);
    layout->addWidget(makeLabel(u"TideLoft"_s, topbar, u"tbLogoName"_s));
    layout->addStretch();
    layout->addWidget(langCombo);
    return topbar;
}

QWidget *SignInPage::makeCenter()
{
    auto *center = makeBox(this, u"authCenter"_s);
    auto *column = makeColumnLayout(center);
    column->addStretch();
    column->addLayout(centred(makeCard(center)));
    column->addStretch();
    return center;
}

QWidget *SignInPage::makeCard(QWidget *center)
{
    auto *card = makeBox(center, u"authCard"_s);
    card->setFixedWidth(340);
    auto *column = makeColumnLayout(card);
    column->setContentsMargins(28, 28, 28, 28);
    addHeading(card, column);
    addFields(card, column);
    addButtons(card, column);
    makeLabel({}, card)->hide(); // kept out of the layout: a place for a message that no flow shows yet
    return card;
}

void SignInPage::addHeading(QWidget *card, QVBoxLayout *column)
{
    auto *brand = makeLabel(u"TL"_s, card, u"cardBrandIco"_s);
    brand->setFixedSize(40, 40);
    brand->setAlignment(Qt::AlignCenter);
    authTitle = makeLabel({}, card, u"authTitle"_s);
    authTitle->setAlignment(Qt::AlignCenter);
    authSubtitle = makeLabel({}, card, u"authSubtitle"_s);
    authSubtitle->setAlignment(Qt::AlignCenter);
    authSubtitle->setWordWrap(true);
    column->addLayout(centred(brand));
    column->addSpacing(12);
    column->addWidget(authTitle);
    column->addWidget(authSubtitle);
    QHBoxLayout *badge = centred(makeSecurityBadge(card));
    badge->setContentsMargins(0, 10, 0, 16);
    column->addLayout(badge);
}

void SignInPage::addFields(QWidget *card, QVBoxLayout *column)
{
    usernameField = makeAuthField(new EmojiLineEdit(card));
    passwordField = makeAuthField(new QLineEdit(card));
    passwordField->setEchoMode(QLineEdit::Password);
    rememberCheck = new QCheckBox(text(u"Kom ihåg mig i 30 dagar"_s, u"Remember me for 30 days"_s), card);
    rememberCheck->setObjectName(u"rememberCheck"_s);
    rememberCheck->setStyleSheet(style::rememberCheck);
    ringFocus(rememberCheck);
    authError = new ErrorLabel(card, u"authError"_s);
    makeNotification(authError);
    authError->hide();
    column->addWidget(usernameField);
    column->addSpacing(8);
    column->addWidget(passwordField);
    column->addSpacing(8);
    auto *remember = new QHBoxLayout;
    remember->addWidget(rememberCheck);
    remember->addStretch();
    column->addLayout(remember);
    column->addSpacing(4);
    column->addWidget(authError);
    column->addSpacing(4);
}

void SignInPage::addButtons(QWidget *card, QVBoxLayout *column)
{
    primaryButton = makeButton({}, card, u"primaryButton"_s);
    primaryButton->setMinimumHeight(40);
    roundFocusRing(primaryButton, 7);
    ghostButton = makeButton({}, card, u"ghostButton"_s);
    ghostButton->setMinimumHeight(36);
    roundFocusRing(ghostButton, 7);
    column->addWidget(primaryButton);
    column->addSpacing(10);
    column->addLayout(makeDivider(text(u"eller"_s, u"or"_s), card));
    column->addWidget(ghostButton);
}

void SignInPage::connectParts()
{
    connect(primaryButton, &QPushButton::clicked, this, &SignInPage::signInClicked);
    connect(ghostButton, &QPushButton::clicked, this, &SignInPage::registerClicked);
    connect(langCombo, &QComboBox::currentIndexChanged, this, &SignInPage::languageChanged);
    connect(usernameField, &QLineEdit::textChanged, this, &SignInPage::keepRememberCheckFor);
    connect(rememberCheck, &QCheckBox::toggled, this, [this] { rememberedUser.clear(); });
    for (QLineEdit *field : {usernameField, passwordField}) {
        connect(field, &QLineEdit::textChanged, this, &SignInPage::hideError);
        connect(field, &QLineEdit::returnPressed, this, &SignInPage::signInClicked);
        keepCompositionKeys(field);
    }
}

} // namespace tideloft::ui
