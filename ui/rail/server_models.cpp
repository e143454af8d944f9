// From the service's groups to server models.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/server_models.h"

#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QList<ServerModel> serverModels(const QJsonArray &servers)
{
    QList<ServerModel> models;
    for (const QJsonValue &value : servers) {
        const QString groupId = value[u"groupId"].toString();
        if (!groupId.isEmpty())
            models.append({.groupId = groupId, .name = value[u"name"].toString()});
    }
    return models;
}

QString serverName(const QJsonArray &servers, const QString &groupId)
{
    const QList<ServerModel> models = serverModels(servers);
    const auto server = std::ranges::find(models, groupId, &ServerModel::groupId);
    return server == models.end() ? QString() : server->name;
}

} // namespace tideloft::ui
