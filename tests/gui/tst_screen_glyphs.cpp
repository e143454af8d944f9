// Laying a text out and looking at the glyphs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_screen_glyphs.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QList<QGlyphRun> runsOf(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.glyphRuns();
}

/// Joins and variation selectors say how their neighbours look, and have no look of their own.
bool isDrawn(char32_t character)
{
    return !QChar::isSpace(character) && QChar::category(character) != QChar::Other_Format
           && QChar::category(character) != QChar::Mark_NonSpacing;
}

/// The symbols that no font of the set has. Whoever chooses the set lists them, one after the other.
bool isListedAsBox(char32_t character)
{
    static const QList<uint> listed = qEnvironmentVariable("TIDELOFT_SCREENS_OTHER_FONTS").toUcs4();
    return listed.contains(character);
}

bool isEmojiFont(const QString &family)
{
    return family.contains(u"emoji"_s, Qt::CaseInsensitive);
}

/// A family of this machine that has CHARACTER, or nothing.
QString familyWith(char32_t character)
{
    for (const QString &family : QFontDatabase::families()) {
        if (QRawFont::fromFont(QFont(family)).supportsCharacter(character))
            return family;
    }
    return {};
}

QString faultOf(char32_t character, const QFont &font)
{
    const QString text = QString::fromUcs4(&character, 1);
    const QList<QGlyphRun> runs = runsOf(text, font);
    if (runs.isEmpty())
        return u"'%1' is not drawn"_s.arg(text);
    if (isEmojiFont(runs.first().rawFont().familyName()) && character < 0x80)
        return u"'%1' is drawn from a font of emoji"_s.arg(text);
    const bool isListed = isListedAsBox(character);
    if (!runs.first().glyphIndexes().contains(0))
        return isListed ? u"'%1' is no box, although it is listed as one"_s.arg(text) : QString();
    const QString family = familyWith(character);
    if (!family.isEmpty())
        return u"'%1' is a box, and %2 has it"_s.arg(text, family);
    return isListed ? QString() : u"'%1' is a box, and no font has it"_s.arg(text);
}

/// The same, looked up once for each character and font: every page has the same ones.
QString knownFaultOf(char32_t character, const QFont &font)
{
    static QHash<QPair<QString, char32_t>, QString> known;
    const QPair<QString, char32_t> key(font.key(), character);
    const auto found = known.constFind(key);
    return found != known.cend() ? *found : *known.insert(key, faultOf(character, font));
}

} // namespace

QStringList glyphFaults(const QString &text, const QFont &font)
{
    QStringList faults;
    QList<uint> seen;
    for (const uint character : text.toUcs4()) {
        if (seen.contains(character))
            continue;
        seen.append(character);
        const QString fault = isDrawn(character) ? knownFaultOf(character, font) : QString();
        if (!fault.isEmpty())
            faults.append(fault);
    }
    return faults;
}

QStringList familiesOf(const QString &text, const QFont &font)
{
    QStringList families;
    for (const QGlyphRun &run : runsOf(text, font))
        families.append(run.rawFont().familyName().toLower());
    families.removeDuplicates();
    return families;
}

int glyphCount(const QString &text, const QFont &font)
{
    int count = 0;
    for (const QGlyphRun &run : runsOf(text, font))
        count += static_cast<int>(run.glyphIndexes().size());
    return count;
}

} // namespace tideloft::tests
