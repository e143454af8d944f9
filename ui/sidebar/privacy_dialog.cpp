// Building the privacy dialog.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/privacy_dialog.h"

#include "ui/style/dialog_styles.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

struct PrivacyChoice {
    LocalizedText label;
    LocalizedText hint;
};

QList<PrivacyChoice> privacyChoices()
{
    return {{{u"Offentlig profil"_s, u"Public profile"_s},
             {u"Alla kan se din profil"_s, u"Anyone can view your profile"_s}},
            {{u"Visa profilbild för alla"_s, u"Show profile picture to everyone"_s},
             {u"Annars bara för kontakter"_s, u"Otherwise only for contacts"_s}},
            {{u"Visa online-status"_s, u"Show online status"_s},
             {u"Andra ser när du är aktiv"_s, u"Others see when you are active"_s}},
            {{u"Tillåt DM från alla"_s, u"Allow DMs from everyone"_s},
             {u"Ta emot meddelanden från okända"_s, u"Receive messages from unknown users"_s}}};
}

QWidget *makeChoiceCard(const PrivacyChoice &choice, Language language, QWidget *dialog)
{
    auto *card = makeBox(dialog);
    card->setStyleSheet(style::privacyCard);
    auto *box = new QCheckBox(choice.label.in(language), card);
    box->setChecked(true);
    ringFocus(box);
    box->setAccessibleDescription(choice.hint.in(language));
    auto *hint = makeStyledLabel(choice.hint.in(language), style::privacyHint, card);
    hint->setWordWrap(true);
    auto *column = makeColumnLayout(card, 4);
    column->setContentsMargins(14, 12, 14, 12);
    column->addWidget(box);
    column->addWidget(hint);
    return card;
}

} // namespace

PrivacyDialog::PrivacyDialog(Language language, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(chooseText(language, u"Quillory — Integritet"_s, u"Quillory — Privacy"_s));
    setFixedWidth(400);
    setStyleSheet(style::privacyDialog);
    auto *column = makeColumnLayout(this, 14);
    column->setContentsMargins(24, 24, 24, 24);
    column->addWidget(
        makeStyledLabel(chooseText(language, u"Integritetsinställningar"_s, u"Privacy Settings"_s),
                        style::dialogHeading, this));
    column->addWidget(
        makeStyledLabel(chooseText(language, u"Styr vem som kan se din profil och dina uppgifter."_s,
                                   u"Control who can see your profile and details."_s),
                        style::dialogExplanation, this));
    for (const PrivacyChoice &choice : privacyChoices())
        column->addWidget(makeChoiceCard(choice, language, this));
    auto *save = new QPushButton(chooseText(language, u"Spara"_s, u"Save"_s), this);
    save->setDefault(true);
    ringFocus(save);
    auto *layout = new QHBoxLayout;
    layout->addStretch();
    layout->addWidget(save);
    column->addLayout(layout);
    connect(save, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace tideloft::ui
