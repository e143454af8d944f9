// Requests about groups, which the window calls servers. They share one failure signal, and it carries the
// toolkit's words: a message in the reply's body is not read.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/reply_limit.h"
#include "net/reply_outcome.h"

#include <QNetworkReply>
#include <QNetworkRequest>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

using GroupContinuation = std::function<void(const QJsonDocument &document)>;

void handleGroupReply(ApiClient *client, QNetworkReply *reply, const GroupContinuation &onSuccess)
{
    limitSize(*reply);
    QObject::connect(reply, &QNetworkReply::finished, client, [client, reply, onSuccess] {
        reply->deleteLater();
        if (const auto [ok, errorText] = outcomeOf(*reply); !ok)
            emit client->serversFailed(errorText);
        else
            onSuccess(QJsonDocument::fromJson(reply->readAll()));
    });
}

} // namespace

void ApiClient::fetchServers()
{
    QNetworkReply *reply = getAgain(u"/api/groups"_s);
    limitSize(*reply);
    const auto handle = [this, reply, mayBeKept = keepsReplies, asked = forgotten] {
        reply->deleteLater();
        const auto unchanged = remembered.takeUnchanged(*reply);
        const auto [ok, errorText] = outcomeOf(*reply);
        if (!ok) {
            emit serversFailed(errorText);
        } else if (!RememberedReplies::saysUnchanged(*reply)) {
            const QJsonDocument document = QJsonDocument::fromJson(reply->readAll());
            if (mayBeKept && asked == forgotten)
                remembered.keep(*reply, document);
            emit serversLoaded(document.array());
        } else if (unchanged) {
            emit serversLoaded(unchanged->array());
        }
    };
    connect(reply, &QNetworkReply::finished, this, handle);
}

void ApiClient::fetchServer(const QString &groupId)
{
    handleGroupReply(this, network.get(buildRequest(u"/api/groups/"_s + groupId)),
                     [this](const QJsonDocument &document) { emit serverLoaded(document.object()); });
}

void ApiClient::createServer(const QString &name, const QString &description)
{
    const QJsonObject body{{u"name"_s, name}, {u"description"_s, description}};
    handleGroupReply(this, post(u"/api/groups"_s, body),
                     [this](const QJsonDocument &document) { emit serverCreated(document.object()); });
}

} // namespace tideloft::net
