// The parts of the settings page, wherever it stands.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/widget_parts.h"

class QLabel;
class QListWidget;
class QPushButton;
class QScrollArea;
class QStackedWidget;

namespace tideloft::tests
{

/// The sections of the settings in their order.
enum Section { Account, Privacy, Security, Notifications, Chat, Appearance, Advanced, About };

class SettingsParts
{
public:
    virtual ~SettingsParts();
    virtual QWidget *settingsPage() const = 0; ///< null until it is built

    QListWidget *nav() const;                            ///< the navigation list
    QPushButton *backButton() const;                     ///< "Back to chat"
    QStackedWidget *sections() const;                    ///< the section stack
    QScrollArea *section(int index) const;               ///< the page of a section
    QWidget *content(int index) const;                   ///< what its scroll area shows
    void clickRow(int index) const;                      ///< a click on a row of the navigation
    QWidget *row(int index, const QString &label) const; ///< the row of a section with that label
    /// A section from top to bottom: a label as its text, a header as "# caption", a card as "card(...)" of
    /// its rows' first labels, and "stretch".
    QStringList outline(int index) const;
};

/// The texts of the labels below ROOT, in the order of their making.
QStringList labelTexts(const QWidget *root);
/// The only label below ROOT with that text; the test program ends where there is none or another.
QLabel *labelWith(const QWidget *root, const QString &text);
/// The only button below ROOT with that text, likewise.
QPushButton *buttonWith(const QWidget *root, const QString &text);
/// The caption of the header that stands right above the card of ROW.
QString headerAbove(const QWidget *row);

} // namespace tideloft::tests
