// The themes and accents that one can choose, and the styles of their buttons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace tideloft::tests
{

using namespace Qt::StringLiterals;

/// The style of the avatar in the footer when it is a picture.
inline const QString pictureStyle =
    u"border-radius: 17px; border: 2px solid #3b8beb;background: transparent; padding: 0;"_s;

/// The accents in the order of their swatches.
inline const QStringList colours{u"#3b8beb"_s, u"#5b5bd6"_s, u"#25a868"_s,
                                 u"#e05454"_s, u"#f59e0b"_s, u"#ec4899"_s};
inline const QStringList themes{u"Dark"_s, u"Light"_s, u"System"_s};

/// Styles of a theme button and a swatch, with the mark or without.
inline QString themeStyle(bool selected)
{
    return selected ? u"background: #3b8beb; color: #fff; border-radius: 6px; font-size: 12px; "
                      "padding: 6px 16px; border: none;"_s
                    : u"background: #0c151e; color: #5a7a9a; border-radius: 6px; font-size: 12px; "
                      "padding: 6px 16px; border: 1px solid #1a2d40;"_s;
}

inline QString swatchStyle(const QString &colour, bool marked)
{
    return u"background: %1; border-radius: 14px; border: %2;"_s.arg(
        colour, marked ? u"3px solid #fff"_s : u"2px solid transparent"_s);
}

} // namespace tideloft::tests
