// Messages as the items of a reply, written straight from the rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/history.h"

namespace tideloft::service
{

/// The message as an object with `from`, `to`, `text`, `iv`, `senderKeys`, `recipientKeys`, `encrypted` and
/// `createdAt` (ISO 8601 in UTC, with ms), and with `peer` where the row has one.
QByteArray messageItem(const MessageRow &row, const QString &userName, const QString &peerName);

/// "2026-05-04T10:00:00.007Z"
QByteArray isoTime(qint64 millisecondsSince1970);

/// A JSON string (RFC 8259, section 7) of a text in UTF-8.
QByteArray quoted(const QByteArray &text);

} // namespace tideloft::service
