// The part of the service's address that a person knows the service by.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::net
{

/// The host of the service that this client was built for, with the port if the address names one:
/// "chat.example.org", "localhost:8443".
QString serviceHost();

} // namespace tideloft::net
