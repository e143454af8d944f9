// TLS settings for every connection of the program.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/tls_policy.h"

#include "net/service_endpoint.h"

#include <QSslConfiguration>

namespace tideloft::net
{

void applyTlsPolicy()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_3OrLater);
    addTrustAnchors(configuration);
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace tideloft::net
