// Counting of replies while they come.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_limit.h"

#include <QNetworkReply>
#include <QObject>
#include <QVariant>

namespace tideloft::net
{

namespace
{

constexpr auto wasAborted = "tideloftAborted";

// The toolkit receives in a thread of its own. That thread stops receiving a little below the size of its
// buffer. Without a bound on the buffer, a fast sender would fill the memory before this thread runs again.
// With the limit itself as the bound, the receiving thread would wait for a reader just below the limit, and
// this thread would never see that the reply is too large.
constexpr qint64 received = largestReply + qint64{1024} * 1024;

// The receiving thread takes over the bound only if it has the request already. A request without a body is
// handed over at once, one with a body a moment later, and one with a body from a file after the file has
// been read. So the bound is set three times.
void boundReceiving(QNetworkReply &reply)
{
    const auto bound = [&reply] { reply.setReadBufferSize(received); };
    bound();
    QMetaObject::invokeMethod(&reply, bound, Qt::QueuedConnection);
    QObject::connect(&reply, &QNetworkReply::requestSent, &reply, bound);
}

} // namespace

void limitSize(QNetworkReply &reply)
{
    boundReceiving(reply);
    QObject::connect(&reply, &QNetworkReply::readyRead, &reply, [&reply] {
        if (!isTooLarge(reply) || reply.property(wasAborted).isValid())
            return;
        reply.setProperty(wasAborted, true);
        // Not aborted at once: a handler of the reply's end may open a dialog, and the toolkit is in the
        // middle of its work on the reply here.
        QMetaObject::invokeMethod(&reply, &QNetworkReply::abort, Qt::QueuedConnection);
    });
}

bool isTooLarge(const QNetworkReply &reply)
{
    return reply.property(wasAborted).isValid() || reply.bytesAvailable() > largestReply;
}

} // namespace tideloft::net
