// A time zone of the test's choice, so that "local" means the same on every machine.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <ctime>

namespace tideloft::tests
{

/// Makes RULE (as in the environment variable TZ, IEEE Std 1003.1) the local time zone of this process.
inline void setLocalZone(const QByteArray &rule)
{
    qputenv("TZ", rule);
    tzset();
}

/// Central European time with its summer time, written out so that no zone files are needed.
inline const QByteArray stockholm = QByteArrayLiteral("CET-1CEST,M3.5.0,M10.5.0/3");

} // namespace tideloft::tests
