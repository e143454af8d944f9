// Which items of a reply are known.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/history_cache.h"

#include "ui/lists/common_ends.h"
#include "ui/messages/unreadable_message.h"

#include <QMultiHash>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// Items that the parser shared compare at once.
CommonEnds sameItems(const QJsonArray &before, const QJsonArray &now)
{
    if (before == now)
        return {now.size(), 0};
    return commonEnds(before.size(), now.size(),
                      [&](qsizetype old, qsizetype current) { return before.at(old) == now.at(current); });
}

} // namespace

class HistoryCache::Places
{
public:
    Places(const QJsonArray &all, qsizetype first, qsizetype end) : items(all)
    {
        for (qsizetype i = first; i < end; ++i)
            places.insert(keyOf(items.at(i)), i);
    }

    /// The place of an item that is equal to VALUE and was not taken before, or -1.
    qsizetype take(const QJsonValue &value)
    {
        const QString key = places.isEmpty() ? QString() : keyOf(value);
        for (auto place = places.find(key); place != places.end() && place.key() == key; ++place) {
            if (items.at(*place) != value)
                continue;
            const qsizetype found = *place;
            places.erase(place);
            return found;
        }
        return -1;
    }

private:
    // No two sealed texts are the same.
    static QString keyOf(const QJsonValue &value) { return value[u"text"_s].toString(); }

    QJsonArray items;
    QMultiHash<QString, qsizetype> places;
};

void HistoryCache::forget()
{
    for (const Known &known : std::as_const(knownBefore))
        known.record.text.close(unreadableText(key.language));
    itemsBefore = {};
    knownBefore.clear();
}

HistoryCache::Known HistoryCache::read(const QJsonValue &value, RecordReader &reader)
{
    if (!value.isObject())
        return {};
    const QJsonObject item = value.toObject();
    return {reader.read(item), true, item.contains(u"createdAt"_s)};
}

QList<HistoryCache::Known> HistoryCache::follow(const QJsonArray &items, const Reading &reading) const
{
    const auto [front, back] = sameItems(itemsBefore, items);
    const qsizetype shift = items.size() - itemsBefore.size();
    Places between(itemsBefore, front, itemsBefore.size() - back);
    RecordReader reader(reading);
    QList<Known> known;
    known.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i) {
        const bool isBetween = i >= front && i < items.size() - back;
        const qsizetype place = isBetween ? between.take(items.at(i)) : i < front ? i : i - shift;
        known.append(place < 0 ? read(items.at(i), reader) : knownBefore.at(place));
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
