// Reading of a finished reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/json_reply.h"

#include "net/http_status.h"
#include "net/reply_cache.h"
#include "net/reply_limit.h"

#include <QNetworkReply>

namespace tideloft::net
{

JsonReply readJsonReply(QNetworkReply &reply, ReplyCache *cache)
{
    const QByteArray body = isTooLarge(reply) ? QByteArray() : reply.readAll();
    return {cache ? cache->read(body) : QJsonDocument::fromJson(body), httpStatus(reply)};
}

} // namespace tideloft::net
