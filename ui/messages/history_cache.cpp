// Which items of a reply are known.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/history_cache.h"

#include "ui/messages/unreadable_message.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

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
    const QList<qsizetype> places =
        knownItems(itemsBefore, items, u"text"_s); // no two sealed texts are the same
    RecordReader reader(reading);
    QList<Known> known;
    known.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i) {
        const qsizetype place = places.at(i);
        known.append(place < 0 ? read(items.at(i), reader) : knownBefore.at(place));
        if (known.last().isMessage && !known.last().isTimed)
            known.last().record.time = reading.now;
    }
    return known;
}

QList<DisplayRecord> HistoryCache::records(const QJsonArray &items, const Reading &reading,
                                           quint64 generation)
{
    const ReadingKey now = readingKey(reading, generation);
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
