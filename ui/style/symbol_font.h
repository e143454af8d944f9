// The font of symbols that are letters for this design and emoji for a font of emoji, such as "⚙".
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QStringList>

namespace tideloft::ui::style
{

/// A family without emoji. Only the app knows which fonts it stands for; without the app it stands for none.
inline QString symbolFamily()
{
    return QStringLiteral("TideLoft Symbols");
}

/// For a button whose text is such a symbol. The other families are those of the window's sheets.
inline QString symbolButton()
{
    return QStringLiteral("QPushButton { font-family: \"%1\", \"Segoe UI\", system-ui, sans-serif; }")
        .arg(symbolFamily());
}

/// For a list's entry with such a symbol in its text.
inline QFont symbolFont()
{
    QFont font;
    font.setFamilies(QStringList{symbolFamily(), QStringLiteral("Segoe UI"), QStringLiteral("system-ui"),
                                 QStringLiteral("sans-serif")});
    return font;
}

} // namespace tideloft::ui::style
