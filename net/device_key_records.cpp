// Normalisation of device key records.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/device_key_records.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

QJsonObject normalised(QJsonObject key)
{
    if (!key.contains(u"publicKeyBase64"_s) && key.contains(u"publicKey"_s))
        key.insert(u"publicKeyBase64"_s, key.take(u"publicKey"_s));
    return key;
}

} // namespace

QJsonArray normaliseDeviceKeys(const QJsonArray &source)
{
    QJsonArray keys;
    for (const auto element : source) {
        if (element.isObject())
            keys.append(normalised(element.toObject()));
    }
    return keys;
}

} // namespace tideloft::net
