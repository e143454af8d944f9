// Font substitution.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QRawFont>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

/// A font of letters that is really there. Fonts of emoji have digits and blanks of their own, wide and
/// hollow: named alone, or first of those that are installed, one of them would draw every number.
QString letters()
{
    for (const QString &family : {u"DejaVu Sans"_s, u"Noto Sans"_s, u"Liberation Sans"_s, u"FreeSans"_s,
                                  u"Roboto"_s, u"Cantarell"_s}) {
        if (QFontDatabase::hasFamily(family))
            return family;
    }
    // Its own name: "Sans Serif", as the desktop's font may be called, stands for nothing in a substitution.
    return QRawFont::fromFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont)).familyName();
}

} // namespace

void substituteFonts()
{
    QFont::insertSubstitutions(u"Segoe UI"_s, QStringList{letters(), u"Noto Color Emoji"_s});
}

} // namespace tideloft::app
