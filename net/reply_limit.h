// The most that one reply may hold, whoever sends it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class QNetworkReply;

namespace tideloft::net
{

/// Bytes of a body after decompression. The history of many years needs a tenth of that.
inline constexpr qint64 largestReply = qint64{128} * 1024 * 1024;

/// Aborts REPLY, whose request was just sent, as soon as it holds more than largestReply. At most as many
/// bytes again are received meanwhile.
void limitSize(QNetworkReply &reply);

/// Whether limitSize() aborted REPLY, or REPLY holds more than largestReply. If so, do not read it.
bool isTooLarge(const QNetworkReply &reply);

} // namespace tideloft::net
