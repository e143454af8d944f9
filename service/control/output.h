// What is written to the terminal.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringList>

#include <cstdio>

namespace tideloft::service
{

/// Writes a line. Control characters become "?", because a terminal would obey them.
void say(const QString &line, FILE *stream = stdout);

/// Lines with columns as wide as what stands in them; numbers are aligned to the right.
QStringList tableLines(const QList<QStringList> &rows);

/// Date and time of ms since 1970, in UTC.
QString timeText(qint64 milliseconds);

} // namespace tideloft::service
