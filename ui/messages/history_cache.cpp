// Which items of a reply are known.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/history_cache.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// How many items are the same, counted from both ends. Those that the parser shared compare at once.
std::pair<qsizetype, qsizetype> sameItems(const QJsonArray &before, const QJsonArray &now)
{
    if (before == now)
        return {now.size(), 0};
    const qsizetype most = qMin(before.size(), now.size());
    qsizetype front = 0;
    while (front < most && before.at(front) == now.at(front))
        ++front;
    qsizetype back = 0;
    while (front + back < most && before.at(before.size() - 1 - back) == now.at(now.size() - 1 - back))
        ++back;
    return {front, back};
}

} // namespace

void HistoryCache::forget()
{
    itemsBefore = {};
    knownBefore.clear();
}

HistoryCache::Known HistoryCache::read(const QJsonValue &value, const Reading &reading)
{
    if (!value.isObject())
        return {};
    const QJsonObject item = value.toObject();
    return {displayRecord(item, reading), true, item.contains(u"createdAt"_s)};
}

QList<HistoryCache::Known> HistoryCache::follow(const QJsonArray &items, const Reading &reading) const
{
    const auto [front, back] = sameItems(itemsBefore, items);
    const qsizetype shift = items.size() - itemsBefore.size();
    QList<Known> known;
    known.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i) {
        const bool isNew = i >= front && i < items.size() - back;
        known.append(isNew ? read(items.at(i), reading) : knownBefore.at(i < front ? i : i - shift));
        if (known.last().isMessage && !known.last().isTimed)
            known.last().record.time = reading.now;
    }
    return known;
}

QList<DisplayRecord> HistoryCache::records(const QJsonArray &items, const Reading &reading,
                                           quint64 generation)
{
    const CacheKey now{reading.ownName, reading.language, QTimeZone::systemTimeZoneId(),
                       reading.now.offsetFromUtc(), generation};
    if (now != key)
        forget();
    key = now;
    knownBefore = follow(items, reading);
    itemsBefore = items;
    QList<DisplayRecord> records;
    records.reserve(knownBefore.size());
    for (const Known &known : std::as_const(knownBefore)) {
        if (known.isMessage)
            records.append(known.record);
    }
    return records;
}

} // namespace tideloft::ui
