// The settings page: its navigation, and the sections beside it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/keyboard/held_focus.h"
#include "ui/settings/profile_card.h"
#include "ui/settings/settings_sections.h"

#include <QWidget>

class QListWidget;
class QStackedWidget;

namespace tideloft::ui
{

/// What the page shows of the person and of the service.
struct SettingsFacts {
    QString username;
    QString bio;     ///< as the service has it
    QString service; ///< the host that the client talks to
};

/// Keeps the language that it is built in; of later changes only its message boxes and the button that saves
/// take notice.
class SettingsPage : public QWidget
{
    Q_OBJECT

public:
    SettingsPage(const SettingsFacts &facts, Language shownLanguage, QWidget *parent);
    void retranslate(Language current) { language = current; }

    void showAccount(); ///< the first section
    /// BIO is what the service has now: it is shown unless the person has typed there.
    void setSavedBio(const QString &bio);
    /// Shows the user's picture, round, 64 x 64, on the profile card.
    void showPicture(const QPixmap &picture);
    /// The answer to saveClicked() is here: the button can be pressed again.
    void endSaving();
    /// BIO was saved: the next profile reply may change the field again, unless more was typed.
    void markSaved(const QString &bio);

signals:
    void backClicked();
    void pictureClicked();
    /// Both texts are trimmed. The button is disabled until endSaving().
    void saveClicked(const QString &displayName, const QString &bio);
    void themeChosen(bool dark);
    void accentChosen(const QString &colour);

private:
    QWidget *makeNavigation();
    [[nodiscard]] QList<QWidget *> makeSections(const SettingsFacts &facts);
    QWidget *makeProfile(const QString &username, QWidget *section);
    void beginSaving();

    Language builtLanguage; ///< of every text that does not change
    Language language;
    QListWidget *settingsNavList = nullptr;
    QStackedWidget *settingsStack = nullptr;
    ProfileCard profile;
    QString savedBio;
    HeldFocus heldFocus; ///< of the button that saves, while it is disabled
};

} // namespace tideloft::ui
