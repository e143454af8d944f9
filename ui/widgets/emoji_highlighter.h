// A text field that draws the emoji in its text as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSyntaxHighlighter>

namespace tideloft::ui
{

/// Keeps emojiFormats() on the text of a field while it changes. Owned by the document.
class EmojiHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString &text) override;
};

} // namespace tideloft::ui
