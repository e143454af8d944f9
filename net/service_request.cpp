// Making of requests.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/service_request.h"

#include "net/service_endpoint.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

// The identifier is whatever its file holds. A line break inside it would end the header and start another,
// and for any control character but the tab newer versions of the toolkit leave the whole header out: RFC
// 9110, section 5.5, allows none. Every other character goes out as it is.
QByteArray headerValue(QString text)
{
    text.removeIf(
        [](QChar character) { return (character < u' ' && character != u'\t') || character == u'\x7f'; });
    return text.toUtf8();
}

} // namespace

QNetworkRequest serviceRequest(const QString &pathAndQuery, RequestPriority priority)
{
    QNetworkRequest request(QUrl(serviceBaseUrl() + pathAndQuery, QUrl::TolerantMode));
    // The session's cookie alone says who asks: a challenge is not to make the toolkit introduce anybody.
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // High, because the toolkit's queue knows no difference between normal and low.
    request.setPriority(priority == RequestPriority::UserInitiated ? QNetworkRequest::HighPriority
                                                                   : QNetworkRequest::LowPriority);
    return request;
}

QNetworkRequest jsonRequest(const QString &pathAndQuery, const DeviceHeaders &device,
                            RequestPriority priority)
{
    QNetworkRequest request = serviceRequest(pathAndQuery, priority);
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    request.setRawHeader("X-Device-Token", headerValue(device.id));
    request.setRawHeader("X-Device-Name", headerValue(device.name));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    return request;
}

} // namespace tideloft::net
