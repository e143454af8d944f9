// The base URL and the trust anchors of a test program, in the place of those that a client is built with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSslCertificate>
#include <QString>

namespace tideloft::tests
{

/// What the client under test takes for the service's origin from now on, without a trailing slash. Until it
/// is set: a port of this machine at which nobody answers.
void setServiceBaseUrl(const QString &origin);

/// What the TLS policy adds to the system's authorities from now on. None until it is set.
void setTrustAnchors(const QList<QSslCertificate> &anchors);

} // namespace tideloft::tests
