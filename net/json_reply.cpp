// Reading of a finished reply.
#include "net/json_reply.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QVariant>

namespace tideloft::net
{

JsonReply readJsonReply(QNetworkReply &reply)
{
    return {QJsonDocument::fromJson(reply.readAll()),
            reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt()};
}

} // namespace tideloft::net
