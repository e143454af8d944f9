// Device key records as an envelope takes them, and the identifiers in what it gives back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

namespace tideloft::tests
{
using namespace Qt::StringLiterals;

inline QJsonObject device(const QJsonValue &deviceId, const QJsonValue &publicKey)
{
    return {{u"deviceId"_s, deviceId}, {u"publicKeyBase64"_s, publicKey}, {u"deviceName"_s, u"ignored"_s}};
}

inline QStringList identifiers(const QJsonArray &records)
{
    QStringList result;
    for (const QJsonValue &record : records)
        result << record.toObject().value(u"deviceId"_s).toString();
    return result;
}

} // namespace tideloft::tests
