// What all requests share: the device's identity, the request builder, and the pipeline of the JSON replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/device_identity.h"
#include "net/json_pipeline.h"
#include "net/service_request.h"

#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

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

QNetworkRequest ApiClient::buildRequest(const QString &pathAndQuery, RequestPriority priority) const
{
    return jsonRequest(pathAndQuery, {ownDeviceId, ownDeviceName}, priority);
}

QNetworkReply *ApiClient::getList(const QString &path, RequestPriority priority)
{
    const QNetworkRequest request = buildRequest(path, priority);
    return caches.areOpen() ? caches.tags.get(network, request) : network.get(request);
}

QNetworkReply *ApiClient::post(const QString &pathAndQuery, const QJsonObject &body)
{
    return network.post(buildRequest(pathAndQuery), QJsonDocument(body).toJson());
}

// A request that signs a user in has no user yet.
const QObject *ApiClient::contextOf(const QNetworkReply &reply) const
{
    static const QStringList signIns{u"/api/auth/login"_s, u"/api/auth/register"_s, u"/api/me"_s};
    return signIns.contains(reply.request().url().path()) ? this : userContext.get();
}

void ApiClient::handleJsonReply(QNetworkReply *reply, const SuccessContinuation &onSuccess,
                                const FailureContinuation &onFailure, ReplyCache *cache)
{
    handleJson(
        reply, contextOf(*reply), caches, cache, [=](const JsonReply &content, const ReplyOutcome &outcome) {
            const auto &[document, status] = content;
            if (outcome.ok)
                onSuccess(document, status);
            else
                onFailure(document.isObject() ? extractErrorMessage(document) : outcome.errorText, status);
        });
}

void ApiClient::clearReplyCaches()
{
    caches.clear();
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
