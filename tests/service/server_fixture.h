// A server on a thread of its own, with limits that a test need not wait for.
#pragma once

#include "service/http_server.h"

#include <QMutex>

#include <thread>

namespace tideloft::tests
{

class ServerFixture
{
public:
    using UploadRule = std::function<bool(const service::Request &head)>;

    explicit ServerFixture(
        service::Handler handler, const service::ServerLimits &limits = {},
        const UploadRule &allowsUpload = [](const auto &) { return false; })
        : server(settings(limits, allowsUpload), std::move(handler)),
          thread([this] { server.run(); })
    {
    }
    Q_DISABLE_COPY_MOVE(ServerFixture)
    ~ServerFixture() { stop(); }

    void stop()
    {
        server.stop();
        if (thread.joinable())
            thread.join();
    }

    quint16 port() const { return server.port(); }

    QList<QByteArray> log()
    {
        const QMutexLocker lock(&mutex);
        return lines;
    }

private:
    service::ServerSettings settings(const service::ServerLimits &limits, const UploadRule &allowsUpload)
    {
        service::ServerSettings wanted;
        wanted.port = 0;
        wanted.limits = limits;
        wanted.allowsUpload = allowsUpload;
        wanted.log = [this](const QByteArray &line) {
            const QMutexLocker lock(&mutex);
            lines << line;
        };
        return wanted;
    }

    QMutex mutex;
    QList<QByteArray> lines;
    service::HttpServer server;
    std::thread thread;
};

} // namespace tideloft::tests
