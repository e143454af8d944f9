// Reading certificate and key again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/renewed_certificate.h"

#include "service/http/certificate.h"

namespace tideloft::service
{

void RenewedCertificate::read()
{
    if (certificateFile.isEmpty())
        return;
    tls.emplace(tlsContext(certificateFile, keyFile));
    const QDateTime newEnd = certificateEnd(*tls);
    validUntil = newEnd.toSecsSinceEpoch();
    const QString warning = expiryWarning(newEnd, QDateTime::currentDateTimeUtc());
    if (!warning.isEmpty())
        log(LogLevel::Warning, 0, warning.toUtf8());
}

void RenewedCertificate::readAgain()
{
    try {
        read();
        log(LogLevel::Info, 0, "read certificate and key again");
    } catch (const std::exception &problem) {
        log(LogLevel::Problem, 0, QByteArray("kept the certificate: ") + problem.what());
    }
}

} // namespace tideloft::service
