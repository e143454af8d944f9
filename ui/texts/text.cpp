// The choice between a text's two versions.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/text.h"

namespace tideloft::ui
{

Language languageFromIndex(int index)
{
    return index == static_cast<int>(Language::English) ? Language::English : Language::Swedish;
}

QString chooseText(Language language, const QString &swedish, const QString &english)
{
    return language == Language::English ? english : swedish;
}

} // namespace tideloft::ui
