// Times and days of messages, read and written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/message_time.h"

#include <QLocale>

#include <array>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// The same local date and time, with its offset as a number: for a time in the system's zone every question
// beyond the date, even how long it is to another time, looks up the zone's file.
QDateTime withKnownOffset(const QDateTime &local)
{
    return local.isValid() ? local.toOffsetFromUtc(local.offsetFromUtc()) : local;
}

/// Whether LOCAL, which was read from TEXT, is what stands there. Clocks leave out an hour when summer time
/// begins; from 6.7 on the toolkit moves a time in that hour on instead of calling it invalid.
bool readsAsWritten(const QDateTime &local, const QString &text)
{
    if (local.timeSpec() != Qt::LocalTime)
        return true;
    const QDateTime written = QDateTime::fromString(text + u'Z', Qt::ISODate); // no hour is left out there
    return !written.isValid() || (written.date() == local.date() && written.time() == local.time());
}

} // namespace

QDateTime LocalTimes::local(const QDateTime &time)
{
    constexpr qint64 seconds = qint64{6} * 3600;
    if (!time.isValid() || time.timeSpec() == Qt::LocalTime || time.toSecsSinceEpoch() < 0)
        return withKnownOffset(time.toLocalTime());
    const qint64 asked = time.toSecsSinceEpoch() / seconds;
    if (asked != period) {
        const auto offsetAt = [](qint64 moment) {
            return QDateTime::fromSecsSinceEpoch(moment).offsetFromUtc();
        };
        offset = offsetAt(asked * seconds);
        if (offset != offsetAt((asked + 1) * seconds))
            return withKnownOffset(time.toLocalTime());
        period = asked;
    }
    return time.toOffsetFromUtc(offset);
}

QDateTime messageTime(const QJsonObject &item, const QDateTime &now, LocalTimes &times)
{
    const auto createdAt = item.constFind(u"createdAt"_s);
    if (createdAt == item.constEnd())
        return now;
    const QString text = createdAt->toString();
    const QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    return readsAsWritten(time, text) ? times.local(time) : QDateTime();
}

QString clockText(const QDateTime &time)
{
    if (!time.isValid())
        return {};
    constexpr std::size_t minutes = 60;
    static std::array<QString, 24 * minutes> texts; // every message of a history has one
    const QTime clock = time.time();
    QString &text =
        texts.at(static_cast<std::size_t>(clock.hour()) * minutes + static_cast<std::size_t>(clock.minute()));
    if (text.isEmpty())
        text = clock.toString(u"HH:mm"_s);
    return text;
}

QString conversationTimeText(const QJsonObject &item, const QDateTime &now)
{
    if (!item.contains(u"createdAt"_s))
        return {};
    LocalTimes times;
    const QDateTime time = messageTime(item, now, times);
    if (!time.isValid())
        return {};
    return time.date() == now.date() ? clockText(time) : QLocale().toString(time.date(), u"d MMM"_s);
}

QString dayLabel(QDate day, QDate today, Language language)
{
    if (!day.isValid())
        return {};
    if (day == today)
        return chooseText(language, u"Idag"_s, u"Today"_s);
    if (day == today.addDays(-1))
        return chooseText(language, u"Igår"_s, u"Yesterday"_s);
    return QLocale().toString(day, u"d MMMM yyyy"_s);
}

} // namespace tideloft::ui
