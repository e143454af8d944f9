// Styles of single widgets that the window's sheet does not reach: rows, bubbles, avatars. They are written
// in the dark palette on purpose and follow neither theme nor accent. A text without a selector reaches the
// widget's children too.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

// Rail

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

// Sidebar footer

/// The footer's avatar while it shows initials.
inline const QString footerInitials =
    QStringLiteral("background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
                   "border-radius: 17px; border: 2px solid #3b8beb;"
                   "color: #7ab0f5; font-size: 11px; font-weight: 700;");

/// The footer's avatar while it shows a picture.
inline const QString footerPicture =
    QStringLiteral("border-radius: 17px; border: 2px solid #3b8beb;background: transparent; padding: 0;");
inline const QString quilloryButton =
    QStringLiteral("background: #1a2e40; color: #5a7a9a; border: 1px solid #1e3a50;"
                   "border-radius: 6px; font-size: 10px; padding: 0 10px;");

// Sign-in page

inline const QString rememberCheck = QStringLiteral("color: #7070a0; font-size: 11px;");

// Conversation list

/// The row, and the box around its avatar.
inline const QString conversationRow = QStringLiteral("background: transparent;");
inline const QString conversationAvatar =
    QStringLiteral("background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
                   "border-radius: 20px; color: #7ab0f5; font-size: 13px; font-weight: 700;");
inline const QString conversationName =
    QStringLiteral("color: #e8f0f8; font-size: 13px; font-weight: 600; background: transparent;");
inline const QString conversationPreview =
    QStringLiteral("color: #5a7a9a; font-size: 11px; font-weight: 400; background: transparent;");
inline const QString conversationTime =
    QStringLiteral("color: #3a5a7a; font-size: 10px; font-weight: 400; background: transparent;");

// Chat page

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
