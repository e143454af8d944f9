// The first card of the Account section: the user's picture, name and texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

class QLineEdit;
class QPlainTextEdit;
class QPixmap;
class QPushButton;
class QWidget;

namespace tideloft::ui
{

/// The finished card, and the parts whose signals the page connects.
struct ProfileCard {
    QWidget *card = nullptr;
    QPushButton *avatarButton = nullptr;
    QLineEdit *displayName = nullptr;
    QPlainTextEdit *bio = nullptr;
    QPushButton *saveButton = nullptr;
};

ProfileCard makeProfileCard(const QString &username, Language language, QWidget *parent);

/// Makes BIO, the text that the service has, the beginning of what is written in FIELD, unless the person has
/// typed there already. A text that is too long to be drawn is left out.
void showSavedBio(QPlainTextEdit *field, const QString &bio);

/// What Save sends: what is written in FIELD, or BIO as it is while nobody has typed there.
QString bioToSave(const QPlainTextEdit *field, const QString &bio);

/// Shows a round picture of 64 px on the avatar button, at 72 px and instead of the initials.
void showPictureOn(QPushButton *avatarButton, const QPixmap &picture);

} // namespace tideloft::ui
