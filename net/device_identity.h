// The identifier by which the service and the wrapped keys know this installation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::net
{

/// The identifier in `device_id.txt` in DIRECTORY, or else a fresh UUID (RFC 4122, version 4; lower case,
/// without braces), which is written there for the next start. Never empty: when the file can neither be read
/// nor written, the fresh identifier is used for this run only. Only a regular file of at most 64 KiB is
/// read. A link, or a file that has a second name, is not written to. Directory and file become their owner's
/// alone. Waits up to two seconds for another copy of the program that does the same at this moment.
QString loadOrCreateDeviceId(const QString &directory);

} // namespace tideloft::net
