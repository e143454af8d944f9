// The identifier by which the service and the wrapped keys know this installation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::net
{

/// The identifier that `device_id.txt` in DIRECTORY holds, or else a fresh UUID (RFC 4122, version 4; lower
/// case, without braces), written there for the next time, readable by its owner only. Never empty: when the
/// file can neither be read nor written, the fresh identifier is good for this run. Only a regular file of at
/// most 64 KiB is read. Waits for another copy of the program that is here at the same moment.
QString loadOrCreateDeviceId(const QString &directory);

} // namespace tideloft::net
