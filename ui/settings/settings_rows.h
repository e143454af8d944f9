// The rows that the settings sections are made of.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QPushButton;
class QVBoxLayout;
class QWidget;

namespace tideloft::ui
{

/// An upper-case caption with a line below it.
QWidget *makeSectionHeader(const QString &caption, QWidget *parent);

/// A rounded box for rows; its layout is a column inside a border of 1 px.
QWidget *makeSettingsCard(QWidget *parent);
/// The column of a card.
QVBoxLayout *columnOf(QWidget *card);

using SwitchToggled = std::function<void(bool on)>;

/// A label with a hint below it (none if HINT is empty) and a switch. TOGGLED, if given, hears of every
/// change.
QWidget *makeSwitchRow(const QString &label, const QString &hint, bool on, QWidget *parent,
                       const SwitchToggled &toggled = {});

/// A label and a button that runs ACTION. An empty STYLE means the default look.
QWidget *makeActionRow(const QString &label, const QString &buttonText, const QString &style, QWidget *parent,
                       const std::function<void()> &action);

/// A label above a one-line field.
QWidget *makeTextRow(const QString &label, const QString &placeholder, const QString &text, QWidget *parent);

} // namespace tideloft::ui
