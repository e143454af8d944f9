// The names of all metrics.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics_page.h"

namespace tideloft::service
{

namespace
{

void gauge(MetricsText &text, const QByteArray &name, const QByteArray &help, double value)
{
    text.begin(name, "gauge", help);
    text.sample({}, value);
}

void writeQueues(MetricsText &text, const ServiceState &state)
{
    text.begin("tideloftd_queue_length", "gauge", "Tasks that wait for a thread.");
    text.sample({{"queue", "reads"}}, static_cast<double>(state.waitingReads));
    text.sample({{"queue", "writes"}}, static_cast<double>(state.waitingWrites));
    text.sample({{"queue", "hashing"}}, static_cast<double>(state.waitingHashes));
}

void writeDatabase(MetricsText &text, const ServiceState &state)
{
    if (state.databaseBytes == 0) // it lies elsewhere
        return;
    text.begin("tideloftd_database_bytes", "gauge",
               "Size of the database file and of the journal beside it.");
    text.sample({{"file", "database"}}, static_cast<double>(state.databaseBytes));
    text.sample({{"file", "journal"}}, static_cast<double>(state.journalBytes));
}

} // namespace

QByteArray metricsPage(const Counters &counters, const ServiceState &state)
{
    MetricsText text;
    counters.write(text);
    gauge(text, "tideloftd_connections", "Connections that are open.",
          static_cast<double>(state.connections));
    writeQueues(text, state);
    if (state.sessions)
        gauge(text, "tideloftd_sessions", "Sessions that have not run out.",
              static_cast<double>(*state.sessions));
    writeDatabase(text, state);
    if (state.certificateEnd.isValid())
        gauge(text, "tideloftd_certificate_expiry_timestamp_seconds",
              "When the certificate expires, in seconds since 1970.",
              static_cast<double>(state.certificateEnd.toSecsSinceEpoch()));
    return text.text();
}

} // namespace tideloft::service
