// Styles of the chat page: message bubbles, avatars, day separators, the notice of a server. They are written
// in the dark palette on purpose and follow neither theme nor accent. A style without a selector also reaches
// the widget's children.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

/// Messages and day separators.
inline const QString historyRow = QStringLiteral("background: transparent;");
inline const QString serverNotice =
    QStringLiteral("color: #5a7a9a; font-size: 13px; background: transparent;");
inline const QString messageAvatar =
    QStringLiteral("background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
                   "border-radius: 17px; color: #fff; font-size: 11px; font-weight: 700; border: none;");
inline const QString ownBubble = QStringLiteral("background: #2a5a8a; border-radius: 12px;");
inline const QString peerBubble = QStringLiteral("background: #1e2d3d; border-radius: 12px;");
inline const QString senderName =
    QStringLiteral("color: #7ab0f5; font-size: 11px; font-weight: 700; background: transparent;");
inline const QString messageText =
    QStringLiteral("color: #e8f0f8; font-size: 13px; background: transparent;");
inline const QString messageTime =
    QStringLiteral("color: #5a7a9a; font-size: 10px; background: transparent;");
inline const QString dayLine = QStringLiteral("background: #1a2d40; max-height: 1px;");
inline const QString dayLabel =
    QStringLiteral("color: #5a7a9a; font-size: 11px; font-weight: 600; background: transparent;");

} // namespace tideloft::ui::style
