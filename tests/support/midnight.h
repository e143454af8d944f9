// The end of the day, for tests of what is shown as of today.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>
#include <QTime>

namespace tideloft::tests
{

/// Close to midnight, waits for the next day: rows that name today are still right when they are read.
inline void stayAwayFromMidnight()
{
    while (QTime::currentTime() >= QTime(23, 58))
        QTest::qWait(1'000);
}

} // namespace tideloft::tests
