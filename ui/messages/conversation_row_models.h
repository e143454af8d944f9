// The rows of the conversation list, as values.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/display_records.h"

namespace tideloft::ui
{

/// One conversation: with whom, how its last message begins, and when that was written. What is said of the
/// last message is read when somebody looks at it.
struct ConversationRowModel {
    QString peer;
    LazyText preview;
    LazyText time;

    bool operator==(const ConversationRowModel &) const = default;
};

size_t qHash(const ConversationRowModel &row, size_t seed = 0);

/// Makes the rows of one reply, read as READING says: a time is shown as what it is on that day.
class ConversationReader
{
public:
    explicit ConversationReader(const Reading &reading);

    /// The row of ITEM; without a peer if ITEM is no object or names none.
    [[nodiscard]] ConversationRowModel read(const QJsonValue &item) const;

private:
    TextOpener previewOpener;
    TextOpener timeOpener;
};

/// One row for each object of ITEMS that names a peer, in their order, up to conversationsLimit. No
/// envelope is opened.
QList<ConversationRowModel> conversationRows(const QJsonArray &items, const Reading &reading);

} // namespace tideloft::ui
