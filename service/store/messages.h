// The tables of messages and conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/message_body.h"

#include <QJsonArray>

namespace tideloft::service
{

void storeMessage(ApiContext &context, const User &sender, const User &recipient, const Message &message);

/// All messages between two users, oldest first, as JSON objects.
QJsonArray history(Database &database, const User &user, const User &peer);

/// The last message with every peer, newest first, each with `peer` beside the fields of a history item.
QJsonArray conversations(Database &database, const User &user);

} // namespace tideloft::service
