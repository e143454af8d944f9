// What tests of the create-server dialog share.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_popups.h"
#include "tests/gui/tst_settings_probe.h"

#include <QDialog>

namespace tideloft::tests
{

/// Opens the dialog by a click on the rail's "+"; see withDialog().
bool withCreateDialog(const SettingsProbe &probe, const std::function<void(QDialog &)> &use);

QLineEdit *nameOf(const QDialog &dialog);
QLineEdit *descriptionOf(const QDialog &dialog);
QPushButton *cancelOf(const QDialog &dialog);
QPushButton *createOf(const QDialog &dialog);
/// Types both texts, each into its field, with the Tab key between them.
void fillIn(const QDialog &dialog, const QString &name, const QString &description);
/// Lets the dialog make a server called NAME.
bool createServer(const SettingsProbe &probe, const QString &name);

} // namespace tideloft::tests
