// Success and failure of a reply. The toolkit alone decides, but for one thing that escapes it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_outcome.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

constexpr int noContent = 204;
constexpr int notModified = 304;

// Neither of these has a body, whatever length it tells, and chunks are not counted by it (RFC 9112, 6.3).
bool lengthCounts(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status != noContent && status != notModified
           && !reply.rawHeader("Transfer-Encoding").toLower().contains("chunked");
}

// The toolkit takes a body that was cut off for a whole one when it hears of the connection's end a moment
// after the body's last bytes. It leaves no length with a body that it has decompressed.
bool isCutOff(const QNetworkReply &reply)
{
    const QVariant length = reply.header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() && reply.bytesAvailable() < length.toLongLong() && lengthCounts(reply);
}

} // namespace

ReplyOutcome outcomeOf(const QNetworkReply &reply)
{
    if (reply.error() != QNetworkReply::NoError)
        return {false, reply.errorString()};
    if (isCutOff(reply))
        return {false, u"Connection closed"_s}; // as the toolkit says when it notices
    return {true, {}};
}

} // namespace tideloft::net
