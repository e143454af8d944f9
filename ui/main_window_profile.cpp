// The user's own picture and the menu of the sidebar's footer.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/settings/privacy_dialog.h"
#include "ui/style/inline_styles.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/menu_choice.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/picture_dialog.h"
#include "ui/widgets/picture_file.h"
#include "ui/widgets/round_picture.h"

#include <QLabel>
#include <QListWidget>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::chooseAvatar()
{
    const QString path =
        choosePicture(this, text(u"Välj profilbild"_s, u"Choose profile picture"_s), language());
    if (path.isEmpty())
        return;
    if (const auto problem = problemWithPicture(path)) {
        showWarning(this, problem->in(language()));
        return;
    }
    pictureOwner = myUsername;
    api.uploadAvatar(path);
}

void MainWindow::onAvatarUploaded(bool ok, const QString &localPath)
{
    const bool isOfAnother = !pictureOwner.isEmpty() && pictureOwner != myUsername;
    if (!ok || isOfAnother) // who chose it may have logged out since
        return;
    const QPixmap picture(localPath);
    if (picture.isNull())
        return;
    if (footerAvatar) {
        footerAvatarPixmap = roundPicture(picture, 34);
        showFooterPicture();
    }
    confirmInFooter(text(u"✓ Bild uppdaterad"_s, u"✓ Picture updated"_s));
    emit avatarPixmapReady(roundPicture(picture, 64));
}

void MainWindow::showFooterPicture()
{
    footerAvatar->setPixmap(footerAvatarPixmap); // takes the place of the initials
    footerAvatar->setStyleSheet(style::footerPicture());
}

void MainWindow::confirmInFooter(const QString &confirmation)
{
    if (!myStatus)
        return;
    notify(myStatus, confirmation);
    QTimer::singleShot(2000, Qt::CoarseTimer, this, [this] { myStatus->setText(u"● Online"_s); });
}

void MainWindow::showUserMenu(QWidget *footer)
{
    QMenu menu(this);
    menu.setObjectName(u"userMenu"_s);
    menu.setAccessibleName(footer->accessibleName());
    const QAction *profile = menu.addAction(text(u"Profil"_s, u"Profile"_s));
    const QAction *settings = menu.addAction(text(u"Inställningar"_s, u"Settings"_s));
    menu.addSeparator();
    const QAction *leave = menu.addAction(text(u"Logga ut"_s, u"Log out"_s));
    const QPoint place = footer->mapToGlobal(QPoint(0, -4 - menu.sizeHint().height()));
    const QAction *chosen = choiceFrom(menu, place);
    if (chosen == leave)
        logOut();
    else if (chosen == profile || chosen == settings)
        showSettingsPage();
    if (chosen && chosen == profile)
        settingsNavList->setCurrentRow(0);
}

void MainWindow::showPrivacyDialog()
{
    PrivacyDialog dialog(language(), this);
    dialog.exec();
}

} // namespace tideloft::ui
