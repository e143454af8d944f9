// The most that one reply may hold, whoever sends it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class QNetworkReply;

namespace tideloft::net
{

/// Bytes of a body, as it is read: after decompression. Histories of many years have a tenth of it.
inline constexpr qint64 largestReply = qint64{128} * 1024 * 1024;

/// Gives REPLY, which has just been asked for, up as soon as it holds more than that. As many bytes again may
/// be on their way then: beyond these nothing is received.
void limitSize(QNetworkReply &reply);

/// Whether REPLY was given up, or has come with more than it may hold. Nothing of it is to be read then.
bool isTooLarge(const QNetworkReply &reply);

} // namespace tideloft::net
