// What a finished reply says, before anybody asks whether it is good news.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>

class QNetworkReply;

namespace tideloft::net
{

class ReplyCache;

struct JsonReply {
    QJsonDocument document; ///< empty when the body is empty, not JSON, or too large
    int httpStatus = 0;     ///< 0 when no service answered
};

/// Takes the whole body of REPLY, which must have finished. CACHE, if any, shares what has not changed since
/// the reply before to the same request.
JsonReply readJsonReply(QNetworkReply &reply, ReplyCache *cache = nullptr);

} // namespace tideloft::net
