// The two uploads of pictures. They carry none of the JSON requests' headers: the session's cookie alone says
// whose they are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/image_upload.h"
#include "net/reply_limit.h"
#include "net/reply_outcome.h"
#include "net/service_endpoint.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

QNetworkReply *postImage(QNetworkAccessManager &network, const QString &path,
                         std::unique_ptr<QHttpMultiPart> body)
{
    QNetworkRequest request(QUrl(serviceBaseUrl() + path));
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setPriority(QNetworkRequest::HighPriority); // before refreshes, as every request of the user's
    QNetworkReply *reply = network.post(request, body.get());
    body.release()->setParent(reply); // and with it the open file
    limitSize(*reply);
    return reply;
}

} // namespace

void ApiClient::uploadAvatar(const QString &localPath)
{
    auto body = makeImageBody(u"avatar"_s, localPath);
    if (!body) {
        emit avatarUploaded(false, localPath);
        return;
    }
    QNetworkReply *reply = postImage(network, u"/api/profile/avatar/upload"_s, std::move(body));
    connect(reply, &QNetworkReply::finished, this, [this, reply, localPath] {
        const bool ok = outcomeOf(*reply).ok;
        reply->deleteLater();
        emit avatarUploaded(ok, localPath);
    });
}

// Unlike the avatar's, a failure of the icon is silent, whether the file or the service is at fault.
void ApiClient::uploadServerIcon(const QString &groupId, const QString &localPath)
{
    auto body = makeImageBody(u"icon"_s, localPath);
    if (!body)
        return;
    QNetworkReply *reply = postImage(network, u"/api/groups/"_s + groupId + u"/icon"_s, std::move(body));
    connect(reply, &QNetworkReply::finished, this, [this, reply, groupId] {
        reply->deleteLater();
        if (!outcomeOf(*reply).ok)
            return;
        const QJsonObject answer = QJsonDocument::fromJson(reply->readAll()).object();
        emit serverIconUploaded(groupId, answer.value(u"iconUrl"_s).toString());
    });
}

} // namespace tideloft::net
