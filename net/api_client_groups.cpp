// Requests about groups, which the window calls servers. They share one failure signal. It carries the
// toolkit's error text: a message in the reply's body is not read.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/json_pipeline.h"

#include <QNetworkRequest>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

using GroupContinuation = std::function<void(const QJsonDocument &document)>;

JsonHandler groupHandler(ApiClient *client, const GroupContinuation &onSuccess)
{
    return [client, onSuccess](const JsonReply &content, const ReplyOutcome &outcome) {
        if (outcome.ok)
            onSuccess(content.document);
        else
            emit client->serversFailed(outcome.errorText);
    };
}

} // namespace

void ApiClient::fetchServers()
{
    handleJson(
        getList(u"/api/groups"_s), userContext.get(), caches, &caches.servers,
        groupHandler(this, [this](const QJsonDocument &document) { emit serversLoaded(document.array()); }));
}

void ApiClient::fetchServer(const QString &groupId)
{
    handleJson(
        network.get(buildRequest(u"/api/groups/"_s + groupId)), userContext.get(), caches, nullptr,
        groupHandler(this, [this](const QJsonDocument &document) { emit serverLoaded(document.object()); }));
}

void ApiClient::createServer(const QString &name, const QString &description)
{
    const QJsonObject body{{u"name"_s, name}, {u"description"_s, description}};
    handleJson(
        post(u"/api/groups"_s, body), userContext.get(), caches, nullptr,
        groupHandler(this, [this](const QJsonDocument &document) { emit serverCreated(document.object()); }));
}

} // namespace tideloft::net
