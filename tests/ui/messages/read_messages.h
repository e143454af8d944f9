// What the tests of messages share: how items are read, and when.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tideloft::tests
{

using namespace Qt::StringLiterals;

inline const QString thisDevice = u"this"_s;

inline QJsonArray parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).array();
}

/// A time of the day on which the items are looked at.
inline QDateTime noon()
{
    return {QDate(2024, 5, 17), QTime(12, 0)};
}

/// Opens every item.
inline QString openItem(const QJsonObject &item)
{
    return u"opened "_s + item.value(u"text"_s).toString();
}

/// Opens no item.
inline QString openNothing(const QJsonObject &)
{
    return {};
}

} // namespace tideloft::tests
