// The way of replies in JSON: the common way of replies, and then through the caches.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/json_reply.h"
#include "net/reply_outcome.h"

#include <functional>

class QNetworkReply;
class QObject;

namespace tideloft::net
{

class ReplyCache;
class ReplyCaches;

/// Receives what a finished reply holds, and how the reply ended.
using JsonHandler = std::function<void(const JsonReply &content, const ReplyOutcome &outcome)>;

/// handleReply() for a reply in JSON. CACHE is one of CACHES, for a list that is asked for again and again,
/// or null. A list that has not changed since it was cached is handed over as it was cached. If the cache was
/// emptied meanwhile, because a user signed out or in, such a list is not handed over.
void handleJson(QNetworkReply *reply, const QObject *context, ReplyCaches &caches, ReplyCache *cache,
                const JsonHandler &handler);

} // namespace tideloft::net
