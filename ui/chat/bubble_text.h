// The text of a message in its bubble.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace tideloft::ui
{

/// A wrapped, selectable label that is as wide as its text, up to the width of a bubble. A plain label would
/// break even a short text into several lines, and would cut off a word that is wider than the bubble. In
/// this label such a word goes on in the next line. A plain label would also lay out its text dozens of times
/// on its way into a list. This label lays out its text when it is drawn, and its sizes are measured
/// elsewhere, once each.
class BubbleText : public QLabel
{
    Q_OBJECT

public:
    BubbleText(const QString &text, QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

    /// Spares measuring: TEXT is the size of its own, and WRAPPED that in the bubble, in the present font.
    void setMeasured(QSize text, QSize wrapped);

    /// What copying takes: the selection, else the whole text.
    QString copiedText() const;
    /// Selects all and gives the text the keyboard, so that the key that copies works on it. When the
    /// keyboard goes elsewhere, the selection is lost, as in every label.
    void selectAll();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void breakLongWords();
    void drawEmoji();

    bool hasLongWord = false;
    bool hasEmoji = false;       ///< that need formats
    bool areWordsBroken = false; ///< in the label's own layout, since anything changed
    bool areEmojiDrawn = false;  ///< in the same layout, for the present font
    // Measured for the present font; negative while unknown. Layouts ask for the natural size again and
    // again, between questions about other widths.
    mutable int naturalWidth = -1;
    mutable int naturalHeight = -1;
    mutable int lastWidth = -1;
    mutable int lastHeight = -1;
};

} // namespace tideloft::ui
