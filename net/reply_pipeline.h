// The way of every reply: its size is bounded, its end is judged, and then the reply is deleted.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/reply_outcome.h"

#include <functional>

class QNetworkReply;
class QObject;

namespace tideloft::net
{

/// Receives a reply that has finished, before anything of its body is read.
using ReplyHandler = std::function<void(QNetworkReply &reply, const ReplyOutcome &outcome)>;

/// Calls HANDLER when REPLY, which has just been asked for, has finished. HANDLER belongs to CONTEXT: it is
/// dropped when CONTEXT is destroyed, or by reply->disconnect(context). REPLY deletes itself in any case.
void handleReply(QNetworkReply *reply, const QObject *context, const ReplyHandler &handler);

} // namespace tideloft::net
