// The service of the end-to-end test, which stands on a port and behind an authority made for one run. It
// takes the place of the endpoint in the test's client when that is linked; the shipped client has no such
// switch.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/service_endpoint.h"

#include <QSslCertificate>
#include <QSslConfiguration>

namespace tideloft::net
{

QString serviceBaseUrl()
{
    return qEnvironmentVariable("TIDELOFT_E2E_ORIGIN");
}

void addTrustAnchors(QSslConfiguration &configuration)
{
    configuration.addCaCertificates(QSslCertificate::fromPath(qEnvironmentVariable("TIDELOFT_E2E_CA")));
}

} // namespace tideloft::net
