// Styles of the sidebar: rows of conversations, and the footer. They are written in the dark palette on
// purpose and follow neither theme nor accent. A style without a selector also reaches the widget's children.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

// Conversations

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

// The footer

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

} // namespace tideloft::ui::style
