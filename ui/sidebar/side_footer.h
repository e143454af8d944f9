// The sidebar's footer: who is signed in, the user's menu, and the privacy dialog.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QPixmap>
#include <QWidget>

class QLabel;
class QPushButton;

namespace tideloft::ui
{

class SideFooter : public QWidget
{
    Q_OBJECT

public:
    SideFooter(Language shownLanguage, QWidget *parent);

    void retranslate(Language newLanguage);

    /// Shows the name and the initials of USERNAME.
    void showUser(const QString &username);
    /// Shows PICTURE, round, 34 x 34, in place of the initials, and says so.
    void showNewPicture(const QPixmap &picture);
    /// Shows the picture once more, if there is one, where the initials stand.
    void restorePicture();
    void forgetPicture();
    /// Says that the profile was saved.
    void confirmSaving();

signals:
    void pictureClicked();
    void profileChosen();
    void settingsChosen();
    void logOutChosen();

protected:
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QString text(const QString &swedish, const QString &english) const;
    /// Shows CONFIRMATION for two seconds, where "● Online" stands.
    void confirm(const QString &confirmation);
    void makeParts();
    void layOut();
    void showUserMenu();
    void showPrivacyDialog();

    Language language;
    QPixmap footerAvatarPixmap;
    QLabel *footerAvatar = nullptr;
    QLabel *myName = nullptr;
    QLabel *myStatus = nullptr;
    QPushButton *quilloryBtn = nullptr;
};

} // namespace tideloft::ui
