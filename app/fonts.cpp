// Font substitution.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"

#include <QFont>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

void substituteFonts()
{
    QFont::insertSubstitutions(u"Segoe UI"_s, QStringList{u"DejaVu Sans"_s, u"Noto Color Emoji"_s});
}

} // namespace tideloft::app
