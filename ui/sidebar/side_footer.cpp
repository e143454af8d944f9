// The sidebar's footer: how it is put together, its menu and its dialog.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/side_footer.h"

#include "ui/keyboard/click_keys.h"
#include "ui/sidebar/privacy_dialog.h"
#include "ui/style/sidebar_styles.h"
#include "ui/texts/initials.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/menu_choice.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QLabel *makeStatus(QWidget *footer)
{
    auto *status = new ElidedLabel({}, footer, u"myStatus"_s);
    makeNotification(status); // before its text makes it speak
    status->setText(u"● Online"_s);
    return status;
}

} // namespace

SideFooter::SideFooter(Language shownLanguage, QWidget *parent) : QWidget(parent), language(shownLanguage)
{
    setObjectName(u"sideFooter"_s);
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(58);
    setCursor(Qt::PointingHandCursor);
    clickByKeys(this, [this] { showUserMenu(); });
    setAccessibleRole(this, QAccessible::ButtonMenu);
    ringFocus(this);
    makeParts();
    layOut();
    connect(quilloryBtn, &QPushButton::clicked, this, &SideFooter::showPrivacyDialog);
}

void SideFooter::makeParts()
{
    footerAvatar = makeLabel(u"?"_s, this, u"footerAvatar"_s);
    footerAvatar->setFixedSize(34, 34);
    footerAvatar->setAlignment(Qt::AlignCenter);
    footerAvatar->setToolTip(
        text(u"Klicka för att ändra profilbild"_s, u"Click to change profile picture"_s));
    footerAvatar->setCursor(Qt::PointingHandCursor);
    footerAvatar->setStyleSheet(style::footerInitials);
    myName = new ElidedLabel(u"—"_s, this, u"myName"_s);
    myStatus = makeStatus(this);
    quilloryBtn = makeButton(u"Quillory"_s, this, u"quilloryBtn"_s);
    quilloryBtn->setFixedHeight(24);
    quilloryBtn->setStyleSheet(style::quilloryButton);
}

void SideFooter::layOut()
{
    auto *who = new QVBoxLayout;
    who->setSpacing(2);
    who->addStretch();
    who->addWidget(myName);
    who->addWidget(myStatus);
    who->addStretch();
    auto *layout = makeRowLayout(this, 10);
    layout->setContentsMargins(14, 0, 14, 0);
    layout->addWidget(footerAvatar);
    layout->addLayout(who);
    layout->addStretch();
    layout->addWidget(quilloryBtn);
    layout->addSpacing(4);
    layout->addWidget(makeLabel(u"›"_s, this, u"footerChevron"_s));
}

QString SideFooter::text(const QString &swedish, const QString &english) const
{
    return chooseText(language, swedish, english);
}

// Without a description a screen reader reads the tool tip, which stays in the language that it was made in.
// And the name "Quillory" alone does not say what the button opens.
void SideFooter::retranslate(Language newLanguage)
{
    language = newLanguage;
    myStatus->setText(u"● Online"_s);
    setAccessibleName(text(u"Kontomeny"_s, u"Account menu"_s));
    footerAvatar->setAccessibleName(text(u"Profilbild"_s, u"Profile picture"_s));
    footerAvatar->setAccessibleDescription(
        text(u"Klicka för att ändra profilbild"_s, u"Click to change profile picture"_s));
    quilloryBtn->setAccessibleDescription(text(u"Integritetsinställningar"_s, u"Privacy settings"_s));
}

void SideFooter::showUser(const QString &username)
{
    footerAvatar->setText(initials(username));
    myName->setText(username);
}

void SideFooter::showNewPicture(const QPixmap &picture)
{
    footerAvatarPixmap = picture;
    restorePicture();
    confirm(text(u"✓ Bild uppdaterad"_s, u"✓ Picture updated"_s));
}

void SideFooter::restorePicture()
{
    if (footerAvatarPixmap.isNull())
        return;
    footerAvatar->setPixmap(footerAvatarPixmap); // takes the place of the initials
    footerAvatar->setStyleSheet(style::footerPicture);
}

void SideFooter::forgetPicture()
{
    footerAvatarPixmap = {};
    footerAvatar->setStyleSheet(style::footerInitials);
}

void SideFooter::confirmSaving()
{
    confirm(text(u"✓ Sparad"_s, u"✓ Saved"_s));
}

void SideFooter::confirm(const QString &confirmation)
{
    notify(myStatus, confirmation);
    QTimer::singleShot(2000, Qt::CoarseTimer, this, [this] { myStatus->setText(u"● Online"_s); });
}

// Not a handler of presses: that would hear the second press of a double click, too.
bool SideFooter::event(QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress)
        return QWidget::event(event);
    const QPoint position = static_cast<QMouseEvent *>(event)->position().toPoint();
    if (footerAvatar->geometry().contains(position))
        emit pictureClicked();
    else
        showUserMenu();
    return true;
}

void SideFooter::showUserMenu()
{
    QMenu menu(window());
    menu.setObjectName(u"userMenu"_s);
    menu.setAccessibleName(accessibleName());
    const QAction *profile = menu.addAction(text(u"Profil"_s, u"Profile"_s));
    const QAction *settings = menu.addAction(text(u"Inställningar"_s, u"Settings"_s));
    menu.addSeparator();
    const QAction *leave = menu.addAction(text(u"Logga ut"_s, u"Log out"_s));
    const QPoint place = mapToGlobal(QPoint(0, -4 - menu.sizeHint().height()));
    const QAction *chosen = choiceFrom(menu, place);
    if (!chosen)
        return;
    if (chosen == leave)
        emit logOutChosen();
    else if (chosen == profile)
        emit profileChosen();
    else if (chosen == settings)
        emit settingsChosen();
}

void SideFooter::showPrivacyDialog()
{
    PrivacyDialog dialog(language, window());
    dialog.exec();
}

} // namespace tideloft::ui
