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

/// An upper-case caption with a rule below it.
QWidget *makeSectionHeader(const QString &caption, QWidget *parent);

/// A rounded box for rows; its layout is a column inside a border of 1 px.
QWidget *makeSettingsCard(QWidget *parent);
/// The column of a card.
QVBoxLayout *columnOf(QWidget *card);

/// A label with a hint below it (none if HINT is empty) and a switch.
QWidget *makeSwitchRow(const QString &label, const QString &hint, bool on, QWidget *parent);

/// A label and a button that runs ACTION. An empty STYLESHEET means the usual one.
QWidget *makeActionRow(const QString &label, const QString &buttonText, const QString &styleSheet,
                       QWidget *parent, const std::function<void()> &action);

/// A label above a one-line field.
QWidget *makeTextRow(const QString &label, const QString &placeholder, const QString &text, QWidget *parent);

} // namespace tideloft::ui
