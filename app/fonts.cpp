// Font substitution.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"

#include "ui/style/emoji_font.h"
#include "ui/style/style_sheets.h"
#include "ui/style/symbol_font.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

/// A font of emoji in colour.
const QString &pictures()
{
    static const QString family = u"Noto Color Emoji"_s;
    return family;
}

/// A font that has most symbols, and many emoji as outlines.
const QString &outlines()
{
    static const QString family = u"DejaVu Sans"_s;
    return family;
}

/// A font of letters that is really there, if possible one without emoji: what it has no other font draws.
/// Fonts of emoji have digits and blanks of their own, wide and hollow: named alone, or first of those that
/// are installed, one of them would draw every number.
QString findLetters()
{
    for (const QString &family : {u"Open Sans"_s, u"Noto Sans"_s, u"Liberation Sans"_s, u"Roboto"_s,
                                  u"Cantarell"_s, outlines(), u"FreeSans"_s}) {
        if (QFontDatabase::hasFamily(family))
            return family;
    }
    // Where there is no font, a raw font's name is behind a null pointer.
    const QFont general = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (QFontInfo(general).family().isEmpty())
        return {};
    // Its own name: "Sans Serif", as the desktop's font may be called, stands for nothing in a substitution.
    return QRawFont::fromFont(general).familyName();
}

const QString &letters()
{
    static const QString family = findLetters();
    return family;
}

} // namespace

// The toolkit's own list of families always has "Sans Serif" and others that stand for what is there.
bool hasFonts()
{
    return !letters().isEmpty();
}

// The font of emoji stands before that of the outlines, which would draw the commonest faces in grey.
void substituteFonts()
{
    const QString &first = letters();
    QFont::insertSubstitutions(u"Segoe UI"_s, QStringList{first, pictures(), outlines()});
    QFont::insertSubstitutions(ui::style::symbolFamily(), QStringList{first, outlines()});
    if (QFontDatabase::hasFamily(pictures()))
        QFont::insertSubstitution(ui::style::emojiFamily(), pictures());
}

void useSheetFont()
{
    QApplication::setFont(ui::sheetFont(QApplication::font()));
}

} // namespace tideloft::app
