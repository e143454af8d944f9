// What a finished reply says, before anybody asks whether it is good news.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>

class QNetworkReply;

namespace tideloft::net
{

class RepeatedArray;

struct JsonReply {
    QJsonDocument document; ///< empty when the body is empty, not JSON, or too large
    int httpStatus = 0;     ///< 0 when no service answered
};

/// Takes the whole body of REPLY, which must have finished. A request that is repeated reads it with what it
/// keeps from the reply BEFORE, if any.
JsonReply readJsonReply(QNetworkReply &reply, RepeatedArray *before = nullptr);

} // namespace tideloft::net
