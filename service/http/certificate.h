// The certificate and its key, looked at before anybody connects.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include <boost/asio/ssl/context.hpp>

namespace tideloft::service
{

/// TLS 1.3 with this chain and this key, both PEM. Throws std::runtime_error that names the file and says
/// what is wrong with it.
boost::asio::ssl::context tlsContext(const QString &certificateFile, const QString &keyFile);

/// Until when the first certificate of the context is valid.
QDateTime certificateEnd(boost::asio::ssl::context &context);

/// What to warn of at NOW; empty when the certificate is good for two weeks more.
QString expiryWarning(const QDateTime &end, const QDateTime &now);

} // namespace tideloft::service
