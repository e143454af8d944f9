// The identifier by which the service and the wrapped keys know this installation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::net
{

/// The identifier that `device_id.txt` in DIRECTORY holds, or else a fresh UUID (RFC 4122, version 4; lower
/// case, without braces), written there for the next time. Never empty: when the file can neither be read nor
/// written, the fresh identifier is good for this run. Only a regular file of at most 64 KiB is read; a link,
/// or a file that has a second name, is not written to. Directory and file are made, or become, their owner's
/// alone. Waits for another copy of the program that is here at the same moment, for two seconds at most.
QString loadOrCreateDeviceId(const QString &directory);

} // namespace tideloft::net
