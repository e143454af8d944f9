// The HTTP status of a reply, and the codes that are treated in a way of their own (RFC 9110, section 15).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QVariant>

namespace tideloft::net
{

constexpr int statusOk = 200;
constexpr int statusNoContent = 204;
constexpr int statusNotModified = 304;

/// 0 while REPLY has no status, and when it never gets one.
inline int httpStatus(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace tideloft::net
