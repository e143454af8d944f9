// The sections of the settings view.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <functional>

class QWidget;

namespace tideloft::ui
{

/// What every section needs to know.
struct SectionContext {
    Language language = Language::Swedish;     ///< of the section
    std::function<Language()> currentLanguage; ///< asked by a message box when it opens
    QWidget *parent = nullptr;                 ///< of the section
    QWidget *window = nullptr;                 ///< of the message boxes
};

using CardBuilder = std::function<QWidget *(QWidget *parent)>;

/// Shows USERNAME; what MAKEPROFILECARD returns becomes its first card.
QWidget *buildSettingsKonto(const SectionContext &context, const QString &username,
                            const CardBuilder &makeProfileCard);
QWidget *buildSettingsPrivacy(const SectionContext &context);
QWidget *buildSettingsSecurity(const SectionContext &context);
QWidget *buildSettingsNotifications(const SectionContext &context);
QWidget *buildSettingsChat(const SectionContext &context);
QWidget *buildSettingsAdvanced(const SectionContext &context);
/// SERVICE is the host that the client talks to.
QWidget *buildSettingsAbout(const SectionContext &context, const QString &service);

} // namespace tideloft::ui
