// Connecting of replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_pipeline.h"

#include "net/reply_limit.h"

#include <QNetworkReply>

namespace tideloft::net
{

void handleReply(QNetworkReply *reply, const QObject *context, const ReplyHandler &handler)
{
    limitSize(*reply);
    QObject::connect(reply, &QNetworkReply::finished, context,
                     [reply, handler] { handler(*reply, outcomeOf(*reply)); });
    // Connected second, and so called second: the handler still finds its reply.
    QObject::connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
}

} // namespace tideloft::net
