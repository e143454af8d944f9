// The measurements, each of which reports its lines of the table. Short ones show that the program works.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::bench
{

void measurePolling(bool full);   ///< clients that poll without entity tags
void measureUnchanged(bool full); ///< clients that poll with them, over TLS
void measureBytes(bool full);     ///< what an unchanged conversation costs on the wire
void measureSaturation(bool full);
void measureHistory(bool full);
void measureSends(bool full);
void measureKills(bool full);
void measureHostile(bool full);
void measureTrouble(bool full);
void measureRetention(bool full); ///< while clients poll
void measureShared(bool full);    ///< two services on PostgreSQL
void measureSharedUnchanged(bool full);
void measureSharedSends(bool full); ///< to a service on PostgreSQL
void measureGrowth(bool full);
void measureGrowthOfAFile(bool full);

} // namespace tideloft::bench
