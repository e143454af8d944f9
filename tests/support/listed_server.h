// A server as the service lists it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>

namespace tideloft::tests
{

inline QJsonObject server(const QString &id, const QString &name)
{
    return {{QStringLiteral("groupId"), id},
            {QStringLiteral("name"), name},
            {QStringLiteral("iconUrl"), QStringLiteral("/icons/") + id}};
}

} // namespace tideloft::tests
