// A JSON array that is asked for again and again, and seldom changes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QList>

namespace tideloft::net
{

/// Parses the bodies of one request's replies. What stands at the same place, counted from the beginning or
/// from the end, in the array before is not parsed again: it is that element, shared, so that comparing the
/// two costs nothing.
class RepeatedArray
{
public:
    /// What QJsonDocument::fromJson() makes of `body`; the array is the one before of the next call.
    QJsonDocument read(const QByteArray &body);
    void forget();
    /// How many elements were parsed, of all bodies read so far.
    [[nodiscard]] qsizetype parsedElements() const { return parsed; }

private:
    QJsonDocument parseWhole(const QByteArray &body);
    QJsonDocument parse(const QByteArray &body, const QList<QByteArrayView> &parts);

    QByteArray bodyBefore;
    QList<QByteArrayView> partsBefore; ///< into bodyBefore
    QJsonDocument documentBefore;
    qsizetype parsed = 0;
};

} // namespace tideloft::net
