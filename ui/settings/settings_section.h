// A page of the settings view, put together from headers, cards and rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/settings/settings_switches.h"

class QScrollArea;
class QVBoxLayout;
class QWidget;

namespace tideloft::ui
{

/// Builds one scrollable section from top to bottom.
class SettingsSection
{
public:
    /// Starts with TITLE, unless it is empty.
    SettingsSection(const LocalizedText &title, Language shownLanguage, QWidget *parent);

    /// The parent of everything in the section.
    QWidget *content() const { return page; }
    void add(QWidget *block);
    void addHeader(const LocalizedText &caption);
    QWidget *addCard();
    /// A header and a card of switches for each group. Returns the last card, for rows that follow its
    /// switches.
    QWidget *addSwitches(const QList<SwitchGroup> &groups);
    /// The finished page.
    QWidget *finish();

private:
    Language language;
    QScrollArea *area;
    QWidget *page;
    QVBoxLayout *column;
};

/// The Security section's first card: texts that say the account is in order.
QWidget *makeShieldCard(Language shownLanguage, QWidget *parent);

} // namespace tideloft::ui
