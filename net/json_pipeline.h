// How a reply in JSON is handled: as every reply, and then with the help of the caches.
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
/// or null. When the service answers that a list has not changed, HANDLER gets the cached list. If the cache
/// was emptied before the answer, because a user signed out or in, HANDLER is not called.
void handleJson(QNetworkReply *reply, const QObject *context, ReplyCaches &caches, ReplyCache *cache,
                const JsonHandler &handler);

} // namespace tideloft::net
