// How connections are secured.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::net
{

/// Makes TLS 1.3 (RFC 8446) the least that any connection of this program accepts, and adds the trust anchors
/// that it was built with. Call once, before the first request.
void applyTlsPolicy();

} // namespace tideloft::net
