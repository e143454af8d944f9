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
    QString errorText; ///< the toolkit's error text, or that the reply is too large; empty on success
};

/// REPLY must have finished, and nothing of its body may have been read. A body that is shorter than its
/// Content-Length (RFC 9110, 8.6) has been cut off, which is a failure. Chunks, compressed bodies and bodies
/// that end with the connection have no length to compare with. A reply that is too large is a failure too.
ReplyOutcome outcomeOf(const QNetworkReply &reply);

} // namespace tideloft::net
