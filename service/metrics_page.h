// The page that a monitoring program reads: what was counted, and how the service is at the moment.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/metrics/counters.h"

#include <QDateTime>

#include <optional>

namespace tideloft::service
{

/// How the service is at one moment. What is not known is left out of the page.
struct ServiceState {
    std::size_t connections = 0;
    std::size_t waitingReads = 0;
    std::size_t waitingWrites = 0;
    std::size_t waitingHashes = 0;
    std::optional<qint64> sessions = {};
    qint64 databaseBytes = 0; ///< 0 when it is not known
    qint64 journalBytes = 0;
    QDateTime certificateEnd = {}; ///< not valid without a certificate
};

QByteArray metricsPage(const Counters &counters, const ServiceState &state);

} // namespace tideloft::service
