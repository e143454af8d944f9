// The user's servers as values.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QList>
#include <QString>

namespace tideloft::ui
{

/// A server as its button in the rail shows it. Its icon is known to the service only: the rail draws
/// initials.
struct ServerModel {
    QString groupId;
    QString name;

    bool operator==(const ServerModel &) const = default;
};

/// One model for each object of SERVERS that has a `groupId`, in their order.
QList<ServerModel> serverModels(const QJsonArray &servers);

/// The name of the first of SERVERS with GROUPID; empty if it has none or is not there.
QString serverName(const QJsonArray &servers, const QString &groupId);

} // namespace tideloft::ui
