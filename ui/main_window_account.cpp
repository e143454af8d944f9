// The profile card's behaviour: changing the picture and saving the texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/settings/profile_card.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QWidget *MainWindow::buildProfileCard(QWidget *parent)
{
    const ProfileCard parts = makeProfileCard(myUsername, language(), parent);
    bioField = parts.bio;
    showSavedBio(bioField, myBio);
    connect(parts.avatarButton, &QPushButton::clicked, this, &MainWindow::chooseAvatar);
    connect(this, &MainWindow::avatarPixmapReady, parts.avatarButton,
            [button = parts.avatarButton](const QPixmap &picture) { showPictureOn(button, picture); });
    connect(parts.saveButton, &QPushButton::clicked, this, [this, parts] {
        saveProfile(parts.displayName->text().trimmed(), bioToSave(parts.bio, myBio), parts.saveButton);
    });
    return parts.card;
}

void MainWindow::saveProfile(const QString &displayName, const QString &bio, QPushButton *saveButton)
{
    HeldFocus held;
    held.take({saveButton}, saveButton->parentWidget());
    saveButton->setEnabled(false);
    saveButton->setText(text(u"Sparar..."_s, u"Saving..."_s));
    const auto saved = [this, bio, user = myUsername, button = QPointer(saveButton),
                        held](bool ok, const QString &) mutable {
        if (button) {
            button->setEnabled(true);
            held.giveBack();
            button->setText(text(u"Spara ändringar"_s, u"Save changes"_s));
        }
        if (!ok || user != myUsername) // another user may have signed in since
            return;
        myBio = bio;
        if (bioField && bioField->toPlainText().trimmed() == bio)
            bioField->document()->setModified(false); // the next profile reply may change it again
        confirmInFooter(text(u"✓ Sparad"_s, u"✓ Saved"_s));
    };
    api.updateProfile(displayName, bio, saved);
}

} // namespace tideloft::ui
