// An entry of the conversation list: it knows its row all the time, and has a widget only near the screen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"

#include <QListWidgetItem>

namespace tideloft::ui
{

/// Reads its preview and its time when somebody asks what it says.
class ConversationEntry : public QListWidgetItem
{
public:
    static constexpr int entryType = QListWidgetItem::UserType + 1;
    static constexpr int height = 62;

    ConversationEntry();

    QVariant data(int role) const override;

    [[nodiscard]] const ConversationRowModel &row() const { return shownRow; }
    void setRow(const ConversationRowModel &row);

    /// Whether the entry has no widget, or one that has to be made anew.
    [[nodiscard]] bool needsWidget() const { return !hasWidget || isOutdated; }
    [[nodiscard]] bool ownsWidget() const { return hasWidget; }
    /// The entry's widget is to be made anew.
    void outdateWidget() { isOutdated = true; }
    /// The entry's widget has been made for its present row or, if not ISMADE, taken away.
    void setWidgetMade(bool isMade);

private:
    ConversationRowModel shownRow;
    bool hasWidget = false;
    bool isOutdated = false; ///< the widget is not the one that its row needs now
};

} // namespace tideloft::ui
