// How a finished reply ended, whatever it says.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QNetworkReply;

namespace tideloft::net
{

struct ReplyOutcome {
    bool ok = false;
    QString errorText; ///< the toolkit's words, or that the reply is too large; empty when all is well
};

/// REPLY must have finished, and nothing of its body have been read. A body that is shorter than its
/// Content-Length (RFC 9110, 8.6) has been cut off. Where no length counts - chunks, compressed bodies,
/// bodies that end with the connection - there is nothing to compare. A reply that is too large has failed,
/// whatever it says.
ReplyOutcome outcomeOf(const QNetworkReply &reply);

} // namespace tideloft::net
