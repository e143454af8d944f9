// The parts of the settings' Appearance section, wherever the settings page stands, and the marks on them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/appearance_styles.h"
#include "tests/support/settings_parts.h"

namespace tideloft::tests
{

/// The sheet that must be installed; what a reader would do by hand.
QString expectedSheet(bool dark, const QString &accent);

class AppearanceParts
{
public:
    /// The section of SETTINGS, which is shown.
    explicit AppearanceParts(const SettingsParts &settings);

    QWidget *card(int index) const; ///< 0: the themes, 1: the swatches
    /// The buttons of that card.
    QList<QPushButton *> buttons(int card) const;

    void chooseTheme(int index) const;
    void chooseAccent(const QString &colour) const;

    /// The indexes of the buttons or swatches that carry the mark; -1 for one that has another style.
    QList<int> markedThemes() const;
    QList<int> markedSwatches() const;

private:
    QWidget *section;
};

} // namespace tideloft::tests
