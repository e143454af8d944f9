// Finding sequences of emoji by the grammar of Unicode's technical standard 51.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/emoji_sequences.h"

#include "ui/texts/code_point.h"

#include <algorithm>
#include <string_view>

namespace tideloft::ui
{

namespace
{

constexpr char32_t pictureSelector = 0xfe0f;
constexpr char32_t joiner = 0x200d;
constexpr char32_t keycap = 0x20e3;
constexpr char32_t lastTag = 0xe007f;

/// Those of the first plane that can be pictures, sorted. Digits, # and * are none without a keycap.
constexpr std::u16string_view firstPlane =
    u"©®‼⁉™ℹ↔↕↖↗↘↙↩↪⌚⌛⌨⏏⏩⏪⏫⏬⏭⏮⏯⏰⏱⏲⏳⏸⏹⏺Ⓜ▪"
    u"▫▶◀◻◼◽◾☀☁☂☃☄☎☑☔☕☘☝☠☢☣☦☪☮☯☸☹☺♀♂♈♉♊♋"
    u"♌♍♎♏♐♑♒♓♟♠♣♥♦♨♻♾♿⚒⚓⚔⚕⚖⚗⚙⚛⚜⚠⚡⚧⚪⚫⚰⚱⚽"
    u"⚾⛄⛅⛈⛎⛏⛑⛓⛔⛩⛪⛰⛱⛲⛳⛴⛵⛷⛸⛹⛺⛽✂✅✈✉✊✋✌✍✏✒✔✖"
    u"✝✡✨✳✴❄❇❌❎❓❔❕❗❣❤➕➖➗➡➰➿⤴⤵⬅⬆⬇⬛⬜⭐⭕〰〽㊗㊙";

bool isFlagLetter(char32_t character)
{
    return character >= 0x1f1e6 && character <= 0x1f1ff;
}

bool isSkinTone(char32_t character)
{
    return character >= 0x1f3fb && character <= 0x1f3ff;
}

bool isTag(char32_t character)
{
    return character >= 0xe0020 && character < lastTag;
}

// The blocks of the second plane hold little else.
bool isEmoji(char32_t character)
{
    if (character > 0xffff)
        return character >= 0x1f000 && character <= 0x1faff && !isFlagLetter(character);
    return std::ranges::binary_search(firstPlane, static_cast<char16_t>(character));
}

bool isKeycapBase(char32_t character)
{
    return (character >= U'0' && character <= U'9') || character == U'#' || character == U'*';
}

// Each of the following tells where what begins at START ends; START itself where nothing of that kind
// begins.

qsizetype endOfTags(QStringView text, qsizetype start)
{
    qsizetype end = start;
    while (isTag(codePointAt(text, end)))
        end += 2;
    return end > start && codePointAt(text, end) == lastTag ? end + 2 : start;
}

qsizetype endOfElement(QStringView text, qsizetype start)
{
    const char32_t first = codePointAt(text, start);
    const qsizetype next = start + unitsOf(first);
    const char32_t second = codePointAt(text, next);
    if (isKeycapBase(first))
        return second == pictureSelector && codePointAt(text, next + 1) == keycap ? next + 2 : start;
    if (isFlagLetter(first))
        return isFlagLetter(second) ? next + 2 : start;
    if (!isEmoji(first))
        return start;
    return second == pictureSelector || isSkinTone(second) ? next + unitsOf(second) : endOfTags(text, next);
}

qsizetype endOfSequence(QStringView text, qsizetype start)
{
    qsizetype end = endOfElement(text, start);
    while (end > start && codePointAt(text, end) == joiner) {
        const qsizetype joined = endOfElement(text, end + 1);
        if (joined == end + 1)
            break;
        end = joined;
    }
    return end;
}

} // namespace

QList<EmojiSequence> emojiSequences(QStringView text)
{
    QList<EmojiSequence> sequences;
    if (!asksForEmoji(text))
        return sequences;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype length = endOfSequence(text, start) - start;
        if (asksForEmoji(text.sliced(start, length)))
            sequences.append({start, length});
        start += length > 0 ? length : unitsOf(codePointAt(text, start));
    }
    return sequences;
}

} // namespace tideloft::ui
