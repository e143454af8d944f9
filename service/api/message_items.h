// Messages as the items of a reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/message_body.h"
#include "service/store/messages.h"

#include <QJsonArray>

namespace tideloft::service
{

/// What is kept of a message that came at `now` (ms since 1970).
StoredMessage storedForm(const Message &message, qint64 now);

/// Every message as an object with `from`, `to`, `text`, `iv`, `senderKeys`, `recipientKeys`, `encrypted` and
/// `createdAt` (ISO 8601 in UTC, with ms).
QJsonArray historyItems(const QList<StoredMessage> &messages);

/// The same of each last message, with `peer` beside it.
QJsonArray conversationItems(const QList<Conversation> &conversations);

} // namespace tideloft::service
