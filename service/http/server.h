// The HTTP server: connections, TLS, limits and time-outs. Knows nothing of what is served.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/server_settings.h"

#include <QDateTime>

#include <cstdint>
#include <memory>

namespace tideloft::service
{

/// Answers requests one after the other on the thread that calls run(); only deferred work uses other
/// threads.
class HttpServer
{
public:
    /// Opens the port. Throws std::exception when the address or the certificate cannot be used.
    HttpServer(const ServerSettings &settings, Handler handler);
    Q_DISABLE_COPY_MOVE(HttpServer)
    ~HttpServer();

    std::uint16_t port() const;

    /// Connections that are open. From any thread, as the next one.
    std::size_t connections() const;

    /// Until when the present certificate is valid; not valid itself where there is none.
    QDateTime certificateEnd() const;

    /// Serves until the server is stopped and the replies under way are finished or have had their time.
    void run();

    /// From any thread.
    void stop();

    /// Makes SIGTERM and SIGINT stop the server, and SIGHUP read certificate and key again.
    void stopOnSignals();

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};

} // namespace tideloft::service
