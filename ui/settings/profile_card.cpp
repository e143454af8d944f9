// Building the profile card.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/profile_card.h"

#include "ui/settings/settings_rows.h"
#include "ui/style/settings_styles.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/emoji_highlighter.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/round_picture.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QPushButton *makeAvatarButton(const QString &username, Language language, QWidget *card)
{
    auto *button = makeButton(initials(username).replace(u'&', u"&&"_s), card, u"settingsAvatarBtn"_s);
    button->setFixedSize(72, 72);
    roundFocusRing(button, 36);
    button->setToolTip(
        chooseText(language, u"Klicka för att byta profilbild"_s, u"Click to change profile picture"_s));
    button->setAccessibleName(chooseText(language, u"Profilbild"_s, u"Profile picture"_s));
    button->setStyleSheet(style::profileInitials);
    return button;
}

QHBoxLayout *makeTopRow(QPushButton *avatar, const QString &username, Language language, QWidget *card)
{
    auto *name = new ElidedLabel(username, card);
    name->setStyleSheet(style::profileName);
    auto *hint = makeStyledLabel(chooseText(language, u"Klicka på bilden för att byta profilbild"_s,
                                            u"Click the image to change your profile picture"_s),
                                 style::rowHint, card);
    hint->setWordWrap(true);
    auto *words = new QVBoxLayout;
    words->addWidget(name);
    words->addWidget(hint);
    words->addStretch();
    auto *layout = new QHBoxLayout;
    layout->setSpacing(0);
    layout->addWidget(avatar);
    layout->addSpacing(16);
    layout->addLayout(words, 1);
    return layout;
}

QLabel *makeFieldLabel(const QString &text, QWidget *field, QWidget *card)
{
    auto *label = makeStyledLabel(text, style::fieldLabel, card);
    label->setBuddy(field);
    return label;
}

QLineEdit *makeDisplayName(const QString &username, const QString &label, QWidget *card)
{
    auto *field = new EmojiLineEdit(firstPart(username, nameLimits), card);
    field->setStyleSheet(style::field);
    field->setAccessibleName(label);
    return field;
}

QPlainTextEdit *makeBio(Language language, QWidget *card)
{
    auto *bio = new QPlainTextEdit(card);
    bio->setPlaceholderText(
        chooseText(language, u"Skriv något om dig själv..."_s, u"Write something about yourself..."_s));
    bio->setFixedHeight(70);
    bio->setTabChangesFocus(true);
    bio->setStyleSheet(style::field);
    new EmojiHighlighter(bio->document()); // owned by the document
    bio->setAccessibleName(u"Bio"_s);
    bio->setAccessibleDescription(bio->placeholderText());
    return bio;
}

} // namespace

ProfileCard makeProfileCard(const QString &username, Language language, QWidget *parent)
{
    QWidget *card = makeSettingsCard(parent);
    const QString nameLabel = chooseText(language, u"Visningsnamn"_s, u"Display name"_s);
    ProfileCard parts{.card = card,
                      .avatarButton = makeAvatarButton(username, language, card),
                      .displayName = makeDisplayName(username, nameLabel, card),
                      .bio = makeBio(language, card),
                      .saveButton =
                          makeButton(chooseText(language, u"Spara ändringar"_s, u"Save changes"_s), card)};
    parts.saveButton->setStyleSheet(style::profileSaveButton);
    auto *save = new QHBoxLayout;
    save->addStretch();
    save->addWidget(parts.saveButton);

    QVBoxLayout *column = columnOf(card);
    column->setContentsMargins(20, 20, 20, 20);
    column->setSpacing(14);
    column->addLayout(makeTopRow(parts.avatarButton, username, language, card));
    column->addWidget(makeFieldLabel(nameLabel, parts.displayName, card));
    column->addWidget(parts.displayName);
    column->addWidget(makeFieldLabel(u"Bio"_s, parts.bio, card));
    column->addWidget(parts.bio);
    column->addLayout(save);
    return parts;
}

void showSavedBio(QPlainTextEdit *field, const QString &bio)
{
    if (!field->document()->isModified() && firstPart(bio, messageLimits) == bio)
        field->setPlainText(bio);
}

QString bioToSave(const QPlainTextEdit *field, const QString &bio)
{
    return field->document()->isModified() ? field->toPlainText().trimmed() : bio.trimmed();
}

void showPictureOn(QPushButton *avatarButton, const QPixmap &picture)
{
    avatarButton->setIcon(roundPicture(picture, 72));
    avatarButton->setIconSize(QSize(72, 72));
    avatarButton->setText({});
    avatarButton->setStyleSheet(style::profilePicture);
}

} // namespace tideloft::ui
