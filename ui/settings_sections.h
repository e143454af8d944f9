// The sections of the settings view.
#pragma once

#include "ui/text.h"

class QWidget;

namespace tideloft::ui
{

/// What every section needs to know.
struct SectionContext {
    Language language = Language::Swedish;
    QWidget *parent = nullptr; ///< of the section
    QWidget *window = nullptr; ///< of the message boxes
};

/// Shows USERNAME; PROFILECARD becomes its first card.
QWidget *buildSettingsKonto(const SectionContext &context, const QString &username, QWidget *profileCard);
QWidget *buildSettingsPrivacy(const SectionContext &context);
QWidget *buildSettingsSecurity(const SectionContext &context);
QWidget *buildSettingsNotifications(const SectionContext &context);
QWidget *buildSettingsChat(const SectionContext &context);
QWidget *buildSettingsAdvanced(const SectionContext &context);
QWidget *buildSettingsAbout(const SectionContext &context);

} // namespace tideloft::ui
