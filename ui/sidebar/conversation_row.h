// A conversation in the sidebar's list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"

class QWidget;

namespace tideloft::ui
{

/// A row with the peer's initials and name, the beginning of the last message, and its time. PARENT is the
/// list's viewport: the preview is cut with the font that the row has there.
QWidget *makeConversationRow(const ConversationRowModel &model, QWidget *parent);

} // namespace tideloft::ui
