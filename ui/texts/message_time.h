// When a message was written, and how that is shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QDateTime>
#include <QJsonObject>

namespace tideloft::ui
{

/// Local times of the messages of one reply. The system looks at the zone's file for every moment that it is
/// asked about; here the moments of some hours share an answer, unless clocks are put on or back in them.
class LocalTimes
{
public:
    /// TIME here, with its offset from UTC as a number.
    QDateTime local(const QDateTime &time);

private:
    qint64 period = -1; ///< for which the offset is known, counted from the beginning of 1970
    int offset = 0;     ///< s
};

/// The local date and time of an item's `createdAt` (ISO 8601), NOW if it has none. A value that cannot be
/// read gives an invalid time.
QDateTime messageTime(const QJsonObject &item, const QDateTime &now, LocalTimes &times);

/// "HH:mm", or an empty text for an invalid time.
QString clockText(const QDateTime &time);

/// The time of a conversation's last message: "HH:mm" today, otherwise "d MMM" with the locale's month. Empty
/// if the item has no `createdAt`.
QString conversationTimeText(const QJsonObject &item, const QDateTime &now);

/// What a day separator says: "Today", "Yesterday" or "d MMMM yyyy" with the locale's month. Empty for no
/// date.
QString dayLabel(QDate day, QDate today, Language language);

} // namespace tideloft::ui
