// The service of a test program, as two settings.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_service_endpoint.h"

#include "net/service_endpoint.h"

#include <QSslConfiguration>

using namespace Qt::StringLiterals;

namespace
{

QString &baseUrl()
{
    static QString origin = u"http://127.0.0.1:1"_s;
    return origin;
}

QList<QSslCertificate> &trustAnchors()
{
    static QList<QSslCertificate> anchors;
    return anchors;
}

} // namespace

void tideloft::tests::setServiceBaseUrl(const QString &origin)
{
    baseUrl() = origin;
}

void tideloft::tests::setTrustAnchors(const QList<QSslCertificate> &anchors)
{
    trustAnchors() = anchors;
}

QString tideloft::net::serviceBaseUrl()
{
    return baseUrl();
}

void tideloft::net::addTrustAnchors(QSslConfiguration &configuration)
{
    if (!trustAnchors().isEmpty()) // adding none would still turn the system's own off
        configuration.addCaCertificates(trustAnchors());
}
