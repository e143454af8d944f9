// What an operation of the client leaves behind to be called when its reply has arrived.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>
#include <QString>

#include <functional>

namespace tideloft::net
{

/// Receives the reply's document, empty when its body is not JSON.
using SuccessContinuation = std::function<void(const QJsonDocument &document, int httpStatus)>;

/// Receives a text for the user; the status is 0 when no service answered.
using FailureContinuation = std::function<void(const QString &message, int httpStatus)>;

/// Receives whether the profile was saved and, if not, the toolkit's error text.
using ProfileCallback = std::function<void(bool ok, const QString &message)>;

} // namespace tideloft::net
