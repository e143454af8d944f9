// Reading of a finished reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/json_reply.h"

#include "net/reply_cache.h"
#include "net/reply_limit.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QVariant>

namespace tideloft::net
{

JsonReply readJsonReply(QNetworkReply &reply, ReplyCache *cache)
{
    const QByteArray body = isTooLarge(reply) ? QByteArray() : reply.readAll();
    return {cache ? cache->read(body) : QJsonDocument::fromJson(body),
            reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt()};
}

} // namespace tideloft::net
