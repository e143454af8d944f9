// Making of requests.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/service_request.h"

#include "net/service_endpoint.h"

#include <QUrl>

namespace tideloft::net
{

QNetworkRequest serviceRequest(const QString &pathAndQuery, Urgency urgency)
{
    QNetworkRequest request(QUrl(serviceBaseUrl() + pathAndQuery, QUrl::TolerantMode));
    // The session's cookie alone says who asks: a challenge is not to make the toolkit introduce anybody.
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // High, because the toolkit's queue knows no difference between normal and low.
    request.setPriority(urgency == Urgency::Asked ? QNetworkRequest::HighPriority
                                                  : QNetworkRequest::LowPriority);
    return request;
}

} // namespace tideloft::net
