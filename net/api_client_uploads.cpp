// The two uploads of pictures. They carry none of the JSON requests' headers: the session's cookie alone says
// whose they are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/image_upload.h"
#include "net/json_reply.h"
#include "net/reply_pipeline.h"
#include "net/service_request.h"

#include <QNetworkReply>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

QNetworkReply *postImage(QNetworkAccessManager &network, const QString &path,
                         std::unique_ptr<QHttpMultiPart> body)
{
    QNetworkReply *reply = network.post(serviceRequest(path), body.get());
    body.release()->setParent(reply); // and with it the open file
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
    handleReply(reply, userContext.get(), [this, localPath](QNetworkReply &, const ReplyOutcome &outcome) {
        emit avatarUploaded(outcome.ok, localPath);
    });
}

// Unlike the avatar's, a failure of the icon is silent, whether the file or the service is at fault.
void ApiClient::uploadServerIcon(const QString &groupId, const QString &localPath)
{
    auto body = makeImageBody(u"icon"_s, localPath);
    if (!body)
        return;
    QNetworkReply *reply = postImage(network, u"/api/groups/"_s + groupId + u"/icon"_s, std::move(body));
    handleReply(reply, userContext.get(),
                [this, groupId](QNetworkReply &finished, const ReplyOutcome &outcome) {
                    if (!outcome.ok)
                        return;
                    const QJsonObject answer = readJsonReply(finished).document.object();
                    emit serverIconUploaded(groupId, answer.value(u"iconUrl"_s).toString());
                });
}

} // namespace tideloft::net
