// The settings page: how it is put together, and saving the profile.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_page.h"

#include "ui/settings/appearance_section.h"
#include "ui/settings/settings_width.h"
#include "ui/style/settings_styles.h"
#include "ui/style/symbol_font.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

const QList<LocalizedText> &sectionNames()
{
    static const QList<LocalizedText> names{{u"👤  Konto"_s, u"👤  Account"_s},
                                            {u"🔒  Privacy"_s, u"🔒  Privacy"_s},
                                            {u"🛡  Säkerhet"_s, u"🛡  Security"_s},
                                            {u"🔔  Notiser"_s, u"🔔  Notifications"_s},
                                            {u"💬  Chatt"_s, u"💬  Chat"_s},
                                            {u"🎨  Utseende"_s, u"🎨  Appearance"_s},
                                            {u"⚙  Avancerat"_s, u"⚙  Advanced"_s},
                                            {u"ℹ️  Om TideLoft"_s, u"ℹ️  About TideLoft"_s}};
    return names;
}

} // namespace

SettingsPage::SettingsPage(const SettingsFacts &facts, Language shownLanguage, QWidget *parent)
    : QWidget(parent),
      builtLanguage(shownLanguage),
      language(shownLanguage),
      savedBio(facts.bio)
{
    setStyleSheet(style::settingsPage);
    setAttribute(Qt::WA_StyledBackground);
    QWidget *navigation = makeNavigation(); // before the sections: the Tab key follows the order of making
    settingsStack = new QStackedWidget(this);
    settingsStack->setStyleSheet(style::settingsPage);
    for (QWidget *section : makeSections(facts)) {
        // Its area takes the keyboard to scroll, so it needs a name: that of its row, without the icon.
        section->setAccessibleName(settingsNavList->item(settingsStack->count())->text().section(u"  "_s, 1));
        settingsStack->addWidget(section);
    }
    auto *layout = makeRowLayout(this);
    layout->addWidget(navigation);
    layout->addWidget(settingsStack, 1);
    fitSectionsToWidth(this, navigation, settingsStack);
    connect(settingsNavList, &QListWidget::currentRowChanged, settingsStack,
            &QStackedWidget::setCurrentIndex);
    settingsNavList->setCurrentRow(0);
}

QList<QWidget *> SettingsPage::makeSections(const SettingsFacts &facts)
{
    const SectionContext context{.language = builtLanguage,
                                 .currentLanguage = [this] { return language; },
                                 .parent = settingsStack,
                                 .window = window()};
    const LookChoices choices{.theme = [this](bool dark) { emit themeChosen(dark); },
                              .accent = [this](const QString &colour) { emit accentChosen(colour); }};
    return {buildSettingsKonto(context, facts.username,
                               [&](QWidget *section) { return makeProfile(facts.username, section); }),
            buildSettingsPrivacy(context),
            buildSettingsSecurity(context),
            buildSettingsNotifications(context),
            buildSettingsChat(context),
            buildSettingsAppearance(context, choices),
            buildSettingsAdvanced(context),
            buildSettingsAbout(context, facts.service)};
}

QWidget *SettingsPage::makeNavigation()
{
    auto *navigation = makeBox(this, u"settingsNav"_s);
    navigation->setStyleSheet(style::settingsNav);
    // The style of the navigation has no selector, so its border would reach the caption. A box without a
    // border stands between the two.
    auto *captionBox = new QWidget(navigation);
    captionBox->setStyleSheet(style::settingsNavCaptionBox);
    auto *caption = makeLabel(chooseText(builtLanguage, u"Inställningar"_s, u"Settings"_s), captionBox);
    caption->setStyleSheet(style::settingsNavCaption);
    makeColumnLayout(captionBox)->addWidget(caption);
    settingsNavList = new QListWidget(navigation);
    settingsNavList->setStyleSheet(style::settingsNavList);
    settingsNavList->setAccessibleName(caption->text());
    ringFocus(settingsNavList);
    for (const LocalizedText &name : sectionNames())
        settingsNavList->addItem(name.in(builtLanguage));
    for (QListWidgetItem *entry : settingsNavList->findItems(u"⚙"_s, Qt::MatchStartsWith))
        entry->setFont(style::symbolFont());
    auto *back = makeButton(
        u"←  "_s + chooseText(builtLanguage, u"Tillbaka till chatten"_s, u"Back to chat"_s), navigation);
    back->setStyleSheet(style::settingsBackButton);
    connect(back, &QPushButton::clicked, this, &SettingsPage::backClicked);
    auto *column = makeColumnLayout(navigation);
    column->addWidget(captionBox);
    column->addWidget(settingsNavList, 1);
    column->addWidget(back);
    return navigation;
}

QWidget *SettingsPage::makeProfile(const QString &username, QWidget *section)
{
    profile = makeProfileCard(username, builtLanguage, section);
    showSavedBio(profile.bio, savedBio);
    connect(profile.avatarButton, &QPushButton::clicked, this, &SettingsPage::pictureClicked);
    connect(profile.saveButton, &QPushButton::clicked, this, &SettingsPage::beginSaving);
    return profile.card;
}

void SettingsPage::showAccount()
{
    settingsNavList->setCurrentRow(0);
}

void SettingsPage::setSavedBio(const QString &bio)
{
    savedBio = bio;
    showSavedBio(profile.bio, savedBio);
}

// NOLINTNEXTLINE(readability-make-member-function-const): the page looks different then
void SettingsPage::showPicture(const QPixmap &picture)
{
    showPictureOn(profile.avatarButton, picture);
}

void SettingsPage::beginSaving()
{
    const QString displayName = profile.displayName->text().trimmed();
    const QString bio = bioToSave(profile.bio, savedBio);
    heldFocus.take({profile.saveButton}, profile.card);
    profile.saveButton->setEnabled(false);
    profile.saveButton->setText(chooseText(language, u"Sparar..."_s, u"Saving..."_s));
    emit saveClicked(displayName, bio);
}

void SettingsPage::endSaving()
{
    profile.saveButton->setEnabled(true);
    heldFocus.giveBack();
    profile.saveButton->setText(chooseText(language, u"Spara ändringar"_s, u"Save changes"_s));
}

void SettingsPage::markSaved(const QString &bio)
{
    savedBio = bio;
    if (profile.bio->toPlainText().trimmed() == bio)
        profile.bio->document()->setModified(false);
}

} // namespace tideloft::ui
