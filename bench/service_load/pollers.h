// Clients that poll as the desktop client does: conversations and the open history, every few seconds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/service_load/client.h"
#include "bench/service_load/latencies.h"
#include "bench/service_load/seed.h"

#include <QByteArrayList>

#include <random>

namespace tideloft::bench
{

struct PollSettings {
    double interval = 3;          ///< seconds between two refreshes of a client
    bool withTags = false;        ///< repeat the entity tag of the last reply
    double sendShare = 0;         ///< of all requests
    std::size_t leastBytes = 100; ///< of a whole reply
    bool apart = false;           ///< each from an address of its own
};

/// What all pollers of one measurement saw.
struct PollResults {
    Latencies latencies;
    std::size_t unchanged = 0; ///< replies with 304
    std::size_t errors = 0;
    QByteArrayList examples; ///< of errors, a few
};

/// Two connections, as the desktop client keeps them.
class Poller
{
public:
    Poller(Loop &owner, const Where &where, const SeededUser &who, const PollSettings &wanted,
           PollResults &seen);

    /// Refreshes for the first time at BEGIN.
    void start(Time begin);

private:
    void refresh(Time due);
    void look(const Reply &reply, std::string &etag);
    void count(const Reply &reply, bool asExpected);

    Loop &loop;
    const SeededUser &user;
    const PollSettings settings;
    PollResults &results;
    Client conversations;
    Client history;
    std::string conversationsTag;
    std::string historyTag;
};

/// Pollers of all users, whose first refreshes are spread evenly over so many seconds.
std::vector<std::unique_ptr<Poller>> startPollers(Loop &loop, const Where &where,
                                                  const std::vector<SeededUser> &users,
                                                  const PollSettings &settings, PollResults &results,
                                                  double spread);

} // namespace tideloft::bench
