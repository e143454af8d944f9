// Building and answering the create-server dialog.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/create_server_dialog.h"

#include "ui/keyboard/composition_keys.h"
#include "ui/style/dialog_styles.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QLineEdit *makeField(const QString &placeholder, int maximumLength, const QString &name, QWidget *dialog)
{
    auto *field = new EmojiLineEdit(dialog);
    field->setPlaceholderText(placeholder);
    field->setMaxLength(maximumLength);
    field->setAccessibleName(name);
    keepCompositionKeys(field);
    return field;
}

} // namespace

CreateServerDialog::CreateServerDialog(Language language, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(chooseText(language, u"Skapa server"_s, u"Create server"_s));
    setFixedWidth(380);
    setStyleSheet(style::createServerDialog);
    auto *column = makeColumnLayout(this, 14);
    column->setContentsMargins(24, 24, 24, 24);
    column->addWidget(makeStyledLabel(chooseText(language, u"Skapa en ny server"_s, u"Create a new server"_s),
                                      style::dialogHeading, this));
    auto *explanation = makeStyledLabel(chooseText(language, u"Ge din server ett namn och en beskrivning."_s,
                                                   u"Give your server a name and description."_s),
                                        style::dialogExplanation, this);
    explanation->setWordWrap(true);
    column->addWidget(explanation);
    addFields(language);
    addButtons(language);
    nameField->setFocus();
}

void CreateServerDialog::addFields(Language language)
{
    const QString nameLabel = chooseText(language, u"Servernamn"_s, u"Server name"_s);
    const QString descriptionLabel =
        chooseText(language, u"Beskrivning (valfritt)"_s, u"Description (optional)"_s);
    nameField = makeField(chooseText(language, u"t.ex. Mitt Community"_s, u"e.g. My Community"_s), 32,
                          nameLabel, this);
    descriptionField =
        makeField(chooseText(language, u"Beskriv din server..."_s, u"Describe your server..."_s), 200,
                  descriptionLabel, this);
    addField(nameLabel, nameField);
    addField(descriptionLabel, descriptionField);
}

void CreateServerDialog::addField(const QString &caption, QLineEdit *field)
{
    auto *label = makeStyledLabel(caption, style::dialogFieldLabel, this);
    label->setBuddy(field);
    layout()->addWidget(label);
    layout()->addWidget(field);
}

void CreateServerDialog::addButtons(Language language)
{
    auto *cancel = new QPushButton(chooseText(language, u"Avbryt"_s, u"Cancel"_s), this);
    cancel->setObjectName(u"cancelBtn"_s);
    auto *create = new QPushButton(chooseText(language, u"Skapa server"_s, u"Create server"_s), this);
    create->setDefault(true); // Return in a field creates, as a person expects; on Cancel it cancels
    ringFocus(cancel);
    ringFocus(create);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cancel);
    buttons->addWidget(create);
    static_cast<QBoxLayout *>(layout())->addLayout(buttons);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(create, &QPushButton::clicked, this, &CreateServerDialog::acceptNamed);
}

QString CreateServerDialog::name() const
{
    return nameField->text().trimmed();
}

QString CreateServerDialog::description() const
{
    return descriptionField->text().trimmed();
}

// Without a name the dialog stays as it is and waits for one.
void CreateServerDialog::acceptNamed()
{
    if (!name().isEmpty())
        accept();
}

} // namespace tideloft::ui
