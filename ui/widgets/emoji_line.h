// One line of text, with its emoji drawn as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTextLayout>

class QPainter;

namespace tideloft::ui
{

/// Measures, cuts and draws a line with emojiFormats(). A text without any is left to the toolkit.
class EmojiLine
{
public:
    EmojiLine(const QString &text, const QFont &font);

    qreal width() const;
    /// The text, or as much of its beginning as fits into ROOM px with "…" behind it. No picture is cut.
    QString elided(int room) const;
    /// Draws the line into PLACE with the pen of PAINTER.
    void draw(QPainter &painter, const QRect &place, Qt::Alignment alignment) const;

private:
    QList<int> cuts() const;

    QTextLayout layout;
};

} // namespace tideloft::ui
