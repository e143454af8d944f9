// All that the program asks of the system and does not get from the toolkit. Whoever brings the client to
// another system provides these functions there, with the same promises, beside those of
// local_files/system.h. No other file of this folder knows which system it runs on.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace tideloft::app
{

/// From now on a crash leaves no picture of the memory, with the private key in it, behind.
void refuseCoreDumps();

/// The user's files that the toolkit opens for the settings of the application, whose identity is set
/// already: its own, the lock that is read before it is written, and the organisation's, where the toolkit
/// looks next.
QStringList settingsFiles();

/// Whether reading PATH comes to an end: nothing is there, or a regular file of at most LARGEST bytes. The
/// opening of a pipe would wait for its other end, and a device may never end.
bool endsSoon(const QString &path, qint64 largest);

} // namespace tideloft::app
