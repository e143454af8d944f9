// The one service that this client talks to. Fixed when the client is built, with no switch at run time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QSslConfiguration;

namespace tideloft::net
{

/// The service's origin, without a trailing slash: "https://chat.example.org".
QString serviceBaseUrl();

/// Adds what, beyond the system's authorities, may vouch for the service. Does nothing unless the client was
/// built for a service on this machine with an authority of its own.
void addTrustAnchors(QSslConfiguration &configuration);

} // namespace tideloft::net
