// Servers as the service lists them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>

namespace tideloft::tests
{

inline QJsonObject server(const QString &id, const QString &name)
{
    return {{QStringLiteral("groupId"), id},
            {QStringLiteral("name"), name},
            {QStringLiteral("iconUrl"), QStringLiteral("/icons/") + id}};
}

/// COUNT servers, called "Server 0" and so on.
inline QJsonArray servers(int count)
{
    QJsonArray list;
    for (int i = 0; i < count; ++i)
        list.append(server(QString::number(i), QStringLiteral("Server %1").arg(i)));
    return list;
}

} // namespace tideloft::tests
