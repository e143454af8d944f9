// What tests of the settings view share: a signed-in window that shows it, and ways to find its parts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gui_probe.h"
#include "ui/texts/text.h"

#include <functional>

class QLabel;
class QListWidget;
class QMenu;
class QPushButton;
class QScrollArea;

namespace tideloft::tests
{

/// The sections of the settings in their order.
enum Section { Account, Privacy, Security, Notifications, Chat, Appearance, Advanced, About };

/// The window after "alice" has signed in.
class SettingsProbe : public GuiProbe
{
public:
    explicit SettingsProbe(ui::Language language = ui::Language::English);

    void choose(ui::Language language) const; ///< on the sign-in page's selector
    QPushButton *messagesButton() const;      ///< of the rail
    QPushButton *settingsButton() const;      ///< of the rail
    void openSettings() const;                ///< a click on the rail
    bool fadedIn() const;                     ///< waits until the page has appeared

    QWidget *settingsPage() const;                       ///< null until it is built
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

/// Opens the footer's menu by a press beside the avatar; see withMenu().
bool withUserMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use);
/// Takes its entry with that INDEX, separators counted. False: the menu did not come up.
bool takeFromUserMenu(const GuiProbe &probe, int index);

/// The texts of the labels below ROOT, in the order of their making.
QStringList labelTexts(const QWidget *root);
/// The only label below ROOT with that text; the test program ends where there is none or another.
QLabel *labelWith(const QWidget *root, const QString &text);
/// The only button below ROOT with that text, likewise.
QPushButton *buttonWith(const QWidget *root, const QString &text);
/// The caption of the header that stands right above the card of ROW.
QString headerAbove(const QWidget *row);

} // namespace tideloft::tests
