// A reply of the service, taken apart.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/http_client.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace tideloft::tests
{

struct HttpReply {
    int status = 0;
    QMap<QByteArray, QByteArray> headers; ///< names in lower case
    QByteArray body;

    QJsonObject object() const { return QJsonDocument::fromJson(body).object(); }
    QJsonArray array() const { return QJsonDocument::fromJson(body).array(); }
    QString text(const QString &member) const { return object().value(member).toString(); }
    QString message() const { return text(QStringLiteral("message")); }
};

inline HttpReply parsedReply(const QByteArray &reply)
{
    const qsizetype end = reply.indexOf("\r\n\r\n");
    HttpReply parsed{statusOf(reply), {}, reply.mid(end + 4)};
    const QList<QByteArray> lines = reply.left(end).split('\n');
    for (const QByteArray &line : lines.mid(1)) {
        const qsizetype colon = line.indexOf(':');
        parsed.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return parsed;
}

} // namespace tideloft::tests
