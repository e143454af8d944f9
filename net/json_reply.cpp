// Reading of a finished reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/json_reply.h"

#include "net/repeated_array.h"
#include "net/reply_limit.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QVariant>

namespace tideloft::net
{

JsonReply readJsonReply(QNetworkReply &reply, RepeatedArray *before)
{
    const QByteArray body = isTooLarge(reply) ? QByteArray() : reply.readAll();
    return {before ? before->read(body) : QJsonDocument::fromJson(body),
            reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt()};
}

} // namespace tideloft::net
