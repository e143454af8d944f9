// A field for one line, with the emoji drawn as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace tideloft::ui
{

class Composition;

/// A line edit that draws its text with emojiFormats(). The text itself stays as it is, and so
/// does what is copied. While an input method composes, the line looks as the input method wants it.
class EmojiLineEdit : public QLineEdit // without a macro: a line edit to style sheets and assistive programs
{
public:
    explicit EmojiLineEdit(QWidget *parent) : EmojiLineEdit({}, parent) {}
    EmojiLineEdit(const QString &text, QWidget *parent);

protected:
    void inputMethodEvent(QInputMethodEvent *event) override;

private:
    void drawEmoji();

    Composition *composition; ///< owned by the field
    bool hasEmoji = false;
};

} // namespace tideloft::ui
