// What the mutation of JSON puts in: the names that the client reads, and values that nobody should send.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

namespace tideloft::tests
{

const QStringList &memberNames();
const QList<QJsonValue> &hostileValues();

} // namespace tideloft::tests
