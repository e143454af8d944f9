// The dialog that makes a server: opening it, and its parts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <functional>

class QLineEdit;
class QPushButton;

namespace tideloft::tests
{

/// Opens the dialog by a click on the "+" of the rail in WINDOW; see withDialog().
bool withCreateDialog(const QWidget &window, const std::function<void(QDialog &)> &use);

QLineEdit *nameOf(const QDialog &dialog);
QLineEdit *descriptionOf(const QDialog &dialog);
QPushButton *cancelOf(const QDialog &dialog);
QPushButton *createOf(const QDialog &dialog);
/// Types both texts, each into its field, with the Tab key between them.
void fillIn(const QDialog &dialog, const QString &name, const QString &description);

} // namespace tideloft::tests
