// Styles of the rail: the servers' buttons and what is around them. They are written in the dark palette on
// purpose and follow neither theme nor accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

inline const QString railSeparator =
    QStringLiteral("background: #1a2d40; max-height: 1px; border: none; margin: 0 8px;");
inline const QString createServerButton =
    QStringLiteral("QPushButton { background: rgba(31,216,130,0.1); border: 1px solid rgba(31,216,130,0.25); "
                   "border-radius: 10px; color: #1fd882; font-size: 20px; }"
                   "QPushButton:hover { background: rgba(31,216,130,0.2); }");

inline QString serverButton(bool selected)
{
    return QStringLiteral(
               "QPushButton { background: %1; border: 1px solid %2; border-radius: 10px; color: #e8f0f8; "
               "font-size: 14px; font-weight: 700; }"
               "QPushButton:hover { border-radius: 8px; border-color: #5aa0f5; }"
               "QPushButton:checked { border-radius: 8px; background: rgba(59,139,235,0.25); "
               "border-color: #3b8beb; }")
        .arg(selected ? QStringLiteral("rgba(59,139,235,0.2)") : QStringLiteral("#131e2a"),
             selected ? QStringLiteral("#3b8beb") : QStringLiteral("#1a2d40"));
}

/// The scroll area of the servers: the rail's colour is seen through it.
inline const QString serverScroll = QStringLiteral("QScrollArea, QScrollArea > QWidget > QWidget "
                                                   "{ background: transparent; border: none; }");

} // namespace tideloft::ui::style
