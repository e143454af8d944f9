// Reads the JSON body of a request, member by member, and refuses what is not as it should be.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tideloft::service
{

/// How deep arrays and objects may stand inside each other.
constexpr int maximumJsonDepth = 32;

/// The deepest nesting in a JSON text; brackets inside strings do not count. Needs no valid JSON.
int jsonDepth(const QByteArray &json);

/// True for text that may stand in one line of a list: no control characters and no half surrogate pairs.
bool isSingleLine(const QString &text);

class JsonBody
{
public:
    /// Throws a Refusal with status 400 unless the body is one JSON object within the depth limit, and 415
    /// when the request declares that its body is something else.
    explicit JsonBody(const Request &request);

    /// Each throws a Refusal with status 400 when the member is missing or of another type. A text is refused
    /// when it has more than MAXIMUMLENGTH code points or is no valid Unicode.
    QString text(const QString &name, qsizetype maximumLength) const;
    bool boolean(const QString &name, bool valueWhenMissing) const;
    QJsonArray array(const QString &name) const;
    QJsonValue value(const QString &name) const { return object.value(name); }

private:
    QJsonObject object;
};

} // namespace tideloft::service
