// A cache of one request's last reply: a JSON array that is asked for again and again, and seldom changes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QList>

namespace tideloft::net
{

/// Parses the bodies of one request's replies. An element that is the same as at its place in the array
/// before, counted from the beginning or from the end, is not parsed again. The element of the array before
/// is shared instead, so that comparing the two costs nothing.
class ReplyCache
{
public:
    /// What QJsonDocument::fromJson() makes of BODY. The next call compares with this array.
    QJsonDocument read(const QByteArray &body);
    void clear();
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
