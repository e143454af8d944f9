// What a finished reply says, before anybody asks whether it is good news.
#pragma once

#include <QJsonDocument>

class QNetworkReply;

namespace tideloft::net
{

struct JsonReply {
    QJsonDocument document; ///< empty when the body is empty or not JSON
    int httpStatus = 0;     ///< 0 when no service answered
};

/// Takes the whole body of REPLY, which must have finished.
JsonReply readJsonReply(QNetworkReply &reply);

} // namespace tideloft::net
