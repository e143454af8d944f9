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

constexpr auto givenUp = "tideloftGivenUp";

// The toolkit receives in a thread of its own, and stops a little short of the size that it is told. Were it
// told none, a fast sender would fill the memory before this thread has its turn; were it told the limit, it
// would wait there for a reader, and nobody would hear of it.
constexpr qint64 received = largestReply + qint64{1024} * 1024;

// The receiving thread hears of the bound only once the request has been handed to it: at once if the request
// has no body, a moment later if it has one, and with a body that is read from a file when that has been
// read.
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
        if (!isTooLarge(reply) || reply.property(givenUp).isValid())
            return;
        reply.setProperty(givenUp, true);
        // Not here: whoever hears of the reply's end may ask the person something, which takes its time.
        QMetaObject::invokeMethod(&reply, &QNetworkReply::abort, Qt::QueuedConnection);
    });
}

bool isTooLarge(const QNetworkReply &reply)
{
    return reply.property(givenUp).isValid() || reply.bytesAvailable() > largestReply;
}

} // namespace tideloft::net
