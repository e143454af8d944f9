// The list of Unicode's emoji-variation-sequences.txt, and joined sequences.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_emoji_table.h"

#include <string_view>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

constexpr std::u32string_view bases =
    U"©®‼⁉™ℹ↔↕↖↗↘↙↩↪⌚⌛⌨⏏⏩⏪⏭⏮⏯⏱"
    U"⏲⏳⏸⏹⏺Ⓜ▪▫▶◀◻◼◽◾☀☁☂☃☄☎☑☔☕☘"
    U"☝☠☢☣☦☪☮☯☸☹☺♀♂♈♉♊♋♌♍♎♏♐♑♒"
    U"♓♟♠♣♥♦♨♻♾♿⚒⚓⚔⚕⚖⚗⚙⚛⚜⚠⚡⚧⚪⚫"
    U"⚰⚱⚽⚾⛄⛅⛈⛏⛑⛓⛔⛩⛪⛰⛱⛲⛳⛴⛵⛷⛸⛹⛺⛽"
    U"✂✈✉✌✍✏✒✔✖✝✡✳✴❄❇❓❗❣❤➡⤴⤵⬅⬆"
    U"⬇⬛⬜⭐⭕〰〽㊗㊙🀄🅰🅱🅾🅿🈂🈚🈯🈷🌍🌎🌏🌕🌜🌡"
    U"🌤🌥🌦🌧🌨🌩🌪🌫🌬🌶🍸🍽🎓🎖🎗🎙🎚🎛🎞🎟🎧🎬🎭🎮"
    U"🏂🏄🏆🏊🏋🏌🏍🏎🏔🏕🏖🏗🏘🏙🏚🏛🏜🏝🏞🏟🏠🏭🏳🏵"
    U"🏷🐈🐕🐟🐦🐿👁👂👆👇👈👉👍👎👓👪👽💣💰💳💻💿📋📚"
    U"📟📤📥📦📪📫📬📭📷📹📺📻📽🔈🔍🔒🔓🕉🕊🕐🕑🕒🕓🕔"
    U"🕕🕖🕗🕘🕙🕚🕛🕜🕝🕞🕟🕠🕡🕢🕣🕤🕥🕦🕧🕯🕰🕳🕴🕵"
    U"🕶🕷🕸🕹🖇🖊🖋🖌🖍🖐🖥🖨🖱🖲🖼🗂🗃🗄🗑🗒🗓🗜🗝🗞"
    U"🗡🗣🗨🗯🗳🗺😐🚇🚍🚑🚔🚘🚭🚲🚹🚺🚼🛋🛍🛎🛏🛠🛡🛢"
    U"🛣🛤🛥🛩🛰🛳";

} // namespace

QStringList requestedPictures()
{
    QStringList sequences;
    for (const char32_t base : bases)
        sequences << QString::fromUcs4(&base, 1) + QChar(0xfe0f);
    for (const QChar base : QStringView(u"0123456789#*"))
        sequences << base + u"\ufe0f\u20e3"_s;
    return sequences;
}

QStringList joinedPictures()
{
    return {u"❤️‍🔥"_s,
            u"❤️‍🩹"_s,
            u"🏳️‍🌈"_s,
            u"🏳️‍⚧️"_s,
            u"👁️‍🗨️"_s,
            u"👩‍❤️‍👨"_s,
            u"👩🏽‍❤️‍💋‍👨🏿"_s,
            u"🕵️‍♂️"_s,
            u"⛹🏽‍♀️"_s,
            u"🧑‍⚕️"_s,
            u"🏴‍☠️"_s};
}

} // namespace tideloft::tests
