// The certificate of a server, which may be read again while connections go on with the one before.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/access_log.h"

#include <boost/asio/ssl/context.hpp>

#include <QDateTime>

#include <atomic>
#include <functional>
#include <optional>

namespace tideloft::service
{

class RenewedCertificate
{
public:
    using Log = std::function<void(LogLevel level, std::uint64_t request, const QByteArray &line)>;

    /// No file is no certificate: then the server speaks plain HTTP.
    RenewedCertificate(QString certificate, QString key, Log output)
        : certificateFile(std::move(certificate)),
          keyFile(std::move(key)),
          log(std::move(output))
    {
    }

    /// Reads both files and warns of an end that is near. Throws std::exception, and keeps what there was.
    void read();

    /// The same without throwing: what came of it stands in the log.
    void readAgain();

    /// Null where there is none.
    boost::asio::ssl::context *context() { return tls ? &*tls : nullptr; }

    /// Not valid where there is none. From any thread.
    QDateTime end() const
    {
        return validUntil == 0 ? QDateTime() : QDateTime::fromSecsSinceEpoch(validUntil).toUTC();
    }

private:
    const QString certificateFile;
    const QString keyFile;
    const Log log;
    std::optional<boost::asio::ssl::context> tls;
    std::atomic<qint64> validUntil = 0; ///< in seconds since 1970; 0 without one
};

} // namespace tideloft::service
