// Copying from the messages of a history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <functional>

class QListWidget;

namespace tideloft::ui
{

/// Gives the messages in LIST a menu that copies and selects, in the language that LANGUAGE tells when the
/// menu opens. The key that copies needs nothing of this: what is selected has the keyboard.
void copyFromHistory(QListWidget *list, const std::function<Language()> &language);

} // namespace tideloft::ui
