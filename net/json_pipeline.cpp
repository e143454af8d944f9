// Reading of replies in JSON with the help of the caches.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/json_pipeline.h"

#include "net/http_status.h"
#include "net/reply_caches.h"
#include "net/reply_pipeline.h"

#include <optional>

namespace tideloft::net
{

namespace
{

// Nothing for a list that has not changed, but is no longer cached.
std::optional<JsonReply> readWithCaches(QNetworkReply &reply, bool ok, ReplyCaches &caches, ReplyCache *cache)
{
    const auto cached = caches.tags.takeNotModified(reply);
    if (ok && ETagCache::isNotModified(reply))
        return cached ? std::optional(JsonReply{*cached, statusNotModified}) : std::nullopt;
    JsonReply content = readJsonReply(reply, cache);
    if (ok && cache)
        caches.tags.insert(reply, content.document);
    return content;
}

} // namespace

void handleJson(QNetworkReply *reply, const QObject *context, ReplyCaches &caches, ReplyCache *cache,
                const JsonHandler &handler)
{
    const quint64 period = caches.periodOfRequest();
    handleReply(reply, context, [=, &caches](QNetworkReply &finished, const ReplyOutcome &outcome) {
        ReplyCache *const open = caches.mayKeep(period) ? cache : nullptr;
        if (const auto content = readWithCaches(finished, outcome.ok, caches, open))
            handler(*content, outcome);
    });
}

} // namespace tideloft::net
