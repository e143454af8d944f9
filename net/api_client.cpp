// What all requests share: the device's identity, the request builder, and the pipeline of the JSON replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/device_identity.h"
#include "net/json_reply.h"
#include "net/reply_limit.h"
#include "net/reply_outcome.h"
#include "net/service_endpoint.h"

#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

// The identifier is whatever its file holds. A line break inside it would end the header and start another,
// and some services take a NUL for the end of what they read. Every other character goes out as it is.
QByteArray headerValue(QString text)
{
    text.removeIf([](QChar character) { return u"\r\n\0"_s.contains(character); });
    return text.toUtf8();
}

} // namespace

ApiClient::ApiClient(QObject *parent)
    : QObject(parent),
      cookieJar(new QNetworkCookieJar(this)),
      ownDeviceName(u"TideLoft Desktop"_s)
{
    // From here on the manager is the jar's parent and deletes it.
    network.setCookieJar(cookieJar);
    loadOrCreateDeviceId();
}

void ApiClient::loadOrCreateDeviceId()
{
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    ownDeviceId = net::loadOrCreateDeviceId(directory);
}

QNetworkRequest ApiClient::buildRequest(const QString &pathAndQuery, Urgency urgency) const
{
    QNetworkRequest request(QUrl(serviceBaseUrl() + pathAndQuery, QUrl::TolerantMode));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    request.setRawHeader("X-Device-Token", headerValue(ownDeviceId));
    request.setRawHeader("X-Device-Name", headerValue(ownDeviceName));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // The session's cookie alone says who asks: a challenge is not to make the toolkit introduce anybody.
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // High, because the toolkit's queue knows no difference between normal and low.
    request.setPriority(urgency == Urgency::Asked ? QNetworkRequest::HighPriority
                                                  : QNetworkRequest::LowPriority);
    return request;
}

QNetworkReply *ApiClient::getAgain(const QString &path, Urgency urgency)
{
    const QNetworkRequest request = buildRequest(path, urgency);
    return keepsReplies ? remembered.get(network, request) : network.get(request);
}

QNetworkReply *ApiClient::post(const QString &pathAndQuery, const QJsonObject &body)
{
    return network.post(buildRequest(pathAndQuery), QJsonDocument(body).toJson());
}

void ApiClient::handleJsonReply(QNetworkReply *reply, SuccessContinuation onSuccess,
                                FailureContinuation onFailure, RepeatedArray *repeated)
{
    // Nothing is kept of a reply that was asked for before a log-out and comes after it, nor of one that was
    // asked for while nobody was signed in.
    const auto handle = [this, reply, repeated, mayBeKept = keepsReplies, asked = forgotten,
                         onSuccess = std::move(onSuccess), onFailure = std::move(onFailure)] {
        const bool isKept = mayBeKept && asked == forgotten;
        const auto [ok, errorText] = outcomeOf(*reply);
        const auto unchanged = remembered.takeUnchanged(*reply);
        if (ok && RememberedReplies::saysUnchanged(*reply)) {
            if (unchanged) // otherwise a log-out came between, and what has not changed is nobody's any more
                onSuccess(*unchanged, 304);
            return;
        }
        const auto [document, httpStatus] = readJsonReply(*reply, isKept ? repeated : nullptr);
        if (ok && isKept && repeated)
            remembered.keep(*reply, document);
        if (ok)
            onSuccess(document, httpStatus);
        else
            onFailure(document.isObject() ? extractErrorMessage(document) : errorText, httpStatus);
    };
    limitSize(*reply);
    // This object as the context: when it is gone, so are its continuations.
    connect(reply, &QNetworkReply::finished, this, handle);
    // Connected second, and so called second: a continuation still finds its reply.
    connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
}

void ApiClient::forgetReplies()
{
    conversations.forget();
    history.forget();
    remembered.forget();
    keepsReplies = false;
    ++forgotten;
}

QString ApiClient::extractErrorMessage(const QJsonDocument &document)
{
    const QJsonObject error = document.object();
    for (const QString &key : {u"message"_s, u"error"_s}) {
        if (error.contains(key))
            return error.value(key).toString();
    }
    return u"Unknown error"_s;
}

} // namespace tideloft::net
