// Times and days of messages, read and written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/message_time.h"

#include <QLocale>

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

QDateTime messageTime(const QJsonObject &item, const QDateTime &now)
{
    const auto createdAt = item.constFind(u"createdAt"_s);
    if (createdAt == item.constEnd())
        return now;
    const QString text = createdAt->toString();
    const QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    return readsAsWritten(time, text) ? withKnownOffset(time.toLocalTime()) : QDateTime();
}

QString clockText(const QDateTime &time)
{
    return time.toString(u"HH:mm"_s);
}

QString conversationTimeText(const QJsonObject &item, const QDateTime &now)
{
    if (!item.contains(u"createdAt"_s))
        return {};
    const QDateTime time = messageTime(item, now);
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
