// What is said of a message that cannot be opened.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

namespace tideloft::ui
{

/// What stands in place of the text in a history, and in a conversation list.
QString unreadableText(Language language);
QString unreadablePreview(Language language);

/// REASON, as the encryption words it, and a sentence in LANGUAGE on what to do. In one line, and bounded.
QString messageTrouble(const QString &reason, Language language);

} // namespace tideloft::ui
