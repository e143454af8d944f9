// The dialog that asks for a picture file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

class QWidget;

namespace tideloft::ui
{

/// Asks for a picture in a file dialog on PARENT. Its path, or nothing if the dialog was cancelled.
QString choosePicture(QWidget *parent, const QString &title, Language language);

/// Asks for the user's own picture. Nothing, after a warning, if the file cannot be a profile picture.
QString chooseProfilePicture(QWidget *parent, Language language);

} // namespace tideloft::ui
