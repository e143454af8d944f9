// Texts of JSON objects that come from the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>

namespace tideloft::crypto
{

/// The text of a member without outer white space. Empty if the member is missing or no text.
inline QString trimmedMember(const QJsonObject &object, const QString &name)
{
    return object.value(name).toString().trimmed();
}

} // namespace tideloft::crypto
