// Parts of the toolkit's own widgets that the toolkit has no function for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QFileDialog;
class QLabel;
class QLineEdit;
class QMessageBox;
class QTextDocument;

namespace tideloft::ui
{

/// The label that shows the text of BOX. A box has a function for the text, but none for its place or font.
QLabel *textLabelOf(const QMessageBox *box);

/// The field of DIALOG in which a file's name is typed; null in the dialog of a desktop.
QLineEdit *nameFieldOf(const QFileDialog *dialog);

/// The document that LABEL draws a selectable text from; null before the label first needs it. A label can
/// neither break long words nor give a part of its text another format: its document can.
QTextDocument *documentOf(const QLabel *label);

} // namespace tideloft::ui
