// The values of many rows as one value.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace tideloft::service
{

inline QString quotedElement(qint64 number)
{
    return QString::number(number);
}

inline QString quotedElement(QString text)
{
    text.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
    return u'"' + text + u'"';
}

/// What VALUEOF gives for each row, a number or a text, as PostgreSQL writes an array: {1,2} or {"a","b"}.
template <typename Rows, typename ValueOf = std::identity>
QString arrayColumn(const Rows &rows, const ValueOf &valueOf = {})
{
    QString elements;
    for (const auto &row : rows) {
        if (!elements.isEmpty())
            elements += u',';
        elements += quotedElement(std::invoke(valueOf, row));
    }
    return u'{' + elements + u'}';
}

} // namespace tideloft::service
