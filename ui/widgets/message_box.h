// The program's message boxes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace tideloft::ui
{

enum class Severity { Information, Warning };

/// Shows TEXT in a modal box titled "TideLoft" with an OK button, as it stands and never as markup; of an
/// endless one the first part. The box never outgrows half the screen: a text with more lines than that has
/// room for, or with words wider than the box, scrolls inside it. Nothing happens while a box that says
/// the same stands before PARENT. Returns at once: replies that arrive meanwhile find the event loop where it
/// always is.
void showMessage(QWidget *parent, Severity severity, const QString &text);

/// The same as a warning.
void showWarning(QWidget *parent, const QString &text);

} // namespace tideloft::ui
