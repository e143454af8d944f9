// Cutting texts that would take too long to lay out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/bounded_text.h"

#include "ui/texts/code_point.h"

#include <algorithm>
#include <utility>

namespace tideloft::ui
{

namespace
{

constexpr char32_t firstMark = 0x300; // before it stand the plain letters of Europe's west
constexpr qsizetype plainWord = 4'000;

bool isLineBreak(char32_t character, char32_t before)
{
    return (character == '\n' && before != '\r') || character == '\r' || character == QChar::LineSeparator
           || character == QChar::ParagraphSeparator;
}

/// What fonts draw as pictures: symbols of the higher planes and the marks that make others such.
bool countsAsPicture(char32_t character)
{
    return (character >= 0x1F000 && character <= 0x1FAFF) || (character >= 0xE0020 && character <= 0xE007F)
           || (character >= 0x2600 && character <= 0x27BF) || character == 0x20E3;
}

/// Whether CHARACTER adds a picture behind BEFORE: U+FE0F makes one of signs such as ©.
bool addsEmoji(char32_t character, char32_t before)
{
    return countsAsPicture(character) || (character == 0xFE0F && before > 0x7F && !countsAsPicture(before));
}

/// Scripts that stand side by side in one language, and in one font.
bool isEastAsian(QChar::Script script)
{
    return script == QChar::Script_Han || script == QChar::Script_Hiragana
           || script == QChar::Script_Katakana;
}

/// Whether a line may end here: at blanks, and anywhere between East Asian characters.
bool breaksLine(char32_t character)
{
    return (QChar::isSpace(character) && character != QChar::Nbsp) || isEastAsian(QChar::script(character));
}

/// Goes through a text and adds up what it takes to draw. The weights were measured. A word that is broken
/// into lines costs the square of its length, because every line searches the whole word again.
class EffortCounter
{
public:
    void add(char32_t character)
    {
        characters += QChar::requiresSurrogates(character) ? 2 : 1;
        lines += isLineBreak(character, last) ? 1 : 0;
        emoji += addsEmoji(character, last) ? 1 : 0;
        effort += effortOf(character);
        last = character;
    }

    bool isWithin(const TextLimits &limits) const
    {
        return characters <= limits.characters && lines <= limits.lines && emoji <= limits.emoji
               && effort <= limits.effort;
    }

    qint64 effort = 0;

private:
    qint64 effortOf(char32_t character)
    {
        if (isLineBreak(character, last)) {
            word = marks = 0;
            return 120;
        }
        word = breaksLine(character) ? 0 : word + 1;
        marks = QChar::isMark(character) ? marks + 1 : 0;
        return 1
               + 4
                     * (word / (character < firstMark ? plainWord : 1'500) + (marks > 0 ? 3 + marks / 15 : 0)
                        + (addsEmoji(character, last) ? 300 : 0)
                        + (changesDirectionOrScript(character) ? 20 + word / 20 : 0));
    }

    bool changesDirectionOrScript(char32_t character)
    {
        const QChar::Direction direction = QChar::direction(character);
        const bool isRightToLeft = direction == QChar::DirR || direction == QChar::DirAL;
        const bool isStrong = isRightToLeft || direction == QChar::DirL || direction == QChar::DirEN
                              || direction == QChar::DirAN;
        if (direction >= QChar::DirLRE && !isStrong && direction != QChar::DirNSM
            && direction != QChar::DirBN)
            return true; // an embedding, an override or an isolate begins or ends
        const QChar::Script ownScript = QChar::script(character);
        const QChar::Script script = isEastAsian(ownScript) ? QChar::Script_Han : ownScript;
        const bool turns = isStrong && std::exchange(wasRightToLeft, isRightToLeft) != isRightToLeft;
        const bool hasScript = script > QChar::Script_Common;
        return (hasScript && std::exchange(lastScript, script) != script) || turns;
    }

    qsizetype characters = 0;
    qsizetype lines = 1;
    qsizetype emoji = 0;
    qint64 word = 0;  // how many characters since the last blank
    qint64 marks = 0; // how many marks stand on the last letter
    char32_t last = 0;
    bool wasRightToLeft = false;
    QChar::Script lastScript = QChar::Script_Latin;
};

/// Whether TEXT need not be counted: each of its characters costs one, and there are too few of them for any
/// limit. Most messages are so.
bool isPlain(const QString &text)
{
    return text.size() < plainWord && std::ranges::all_of(text, [](QChar unit) {
               return unit.unicode() < firstMark && unit != u'\n' && unit != u'\r';
           });
}

} // namespace

QString firstPart(const QString &text, const TextLimits &limits)
{
    if (text.size() <= qMin<qint64>(limits.characters, limits.effort) && isPlain(text))
        return text;
    EffortCounter counter;
    for (qsizetype i = 0; i < text.size();) {
        const char32_t character = codePointAt(text, i);
        counter.add(character);
        if (!counter.isWithin(limits))
            return text.left(i) + u'…';
        i += QChar::requiresSurrogates(character) ? 2 : 1;
    }
    return text;
}

QString inOneLine(const QString &text)
{
    QString line = firstPart(text, nameLimits);
    for (const QChar ending : {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator),
                               QChar(QChar::ParagraphSeparator), variantSeparator})
        line.replace(ending, u' ');
    return line;
}

qint64 drawingEffort(const QString &text)
{
    if (isPlain(text))
        return text.size();
    EffortCounter counter;
    for (qsizetype i = 0; i < text.size();) {
        const char32_t character = codePointAt(text, i);
        counter.add(character);
        i += QChar::requiresSurrogates(character) ? 2 : 1;
    }
    return counter.effort;
}

} // namespace tideloft::ui
