// A label that draws the emoji in its text as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace tideloft::ui
{

/// A plain label that draws its text, if that is one line, with emojiFormats().
class EmojiLabel : public QLabel // without a macro: a label to style sheets and assistive programs
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tideloft::ui
