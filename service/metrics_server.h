// The page of figures on a port of its own, for this machine only.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api.h"
#include "service/http/server.h"
#include "service/metrics_page.h"

#include <thread>

namespace tideloft::service
{

/// Answers on a thread of its own, so that figures come also while the service is busy.
class MetricsServer
{
public:
    /// Opens the port; 0 takes any free one. What it is given must outlive it. Throws std::exception.
    MetricsServer(std::uint16_t port, const Counters &counters, Api &endpoints, const HttpServer &observed,
                  QString place);
    Q_DISABLE_COPY_MOVE(MetricsServer)
    ~MetricsServer();

    std::uint16_t port() const { return server.port(); }

private:
    Reply answer() const;
    ServiceState state() const;

    const Counters &counted;
    Api &api;
    const HttpServer &service;
    const QString database;
    Router router;
    HttpServer server;
    std::thread thread;
};

} // namespace tideloft::service
