// Entity tags (RFC 9110, section 8.8.3): what a client repeats to hear whether anything has changed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

namespace tideloft::service
{

/// The tag of something that has this version, and of which at most that much is given; empty for version 0.
QByteArray entityTag(qint64 version, qsizetype most);

/// True when the value of an If-None-Match header names the tag.
bool namesTag(const QByteArray &ifNoneMatch, const QByteArray &tag);

/// Says that nothing has changed.
Response notModified(const QByteArray &tag);

} // namespace tideloft::service
