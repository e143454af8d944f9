// Success and failure of a reply. The toolkit alone decides, but for two things: a body that was cut off can
// escape it, and it takes one of any size.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_outcome.h"

#include "net/http_status.h"
#include "net/reply_limit.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

// Neither of these has a body, whatever length it tells, and chunks are not counted by it (RFC 9112, 6.3).
bool lengthCounts(const QNetworkReply &reply)
{
    const int status = httpStatus(reply);
    return status != statusNoContent && status != statusNotModified
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
    if (isTooLarge(reply))
        return {false, u"The reply is too large."_s};
    if (reply.error() != QNetworkReply::NoError)
        return {false, reply.errorString()};
    if (isCutOff(reply))
        return {false, u"Connection closed"_s}; // as the toolkit says when it notices
    return {true, {}};
}

} // namespace tideloft::net
