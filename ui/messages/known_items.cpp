// Finding the items of a reply in the one before.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/known_items.h"

#include "ui/lists/common_ends.h"

#include <QMultiHash>
#include <QTimeZone>

namespace tideloft::ui
{

namespace
{

// Items that both replies share in memory are found equal at once.
CommonEnds sameItems(const QJsonArray &before, const QJsonArray &now)
{
    if (before == now)
        return {now.size(), 0};
    return commonEnds(before.size(), now.size(),
                      [&](qsizetype old, qsizetype current) { return before.at(old) == now.at(current); });
}

/// Finds the items of a part of a reply again, wherever they stand now.
class Places
{
public:
    Places(const QJsonArray &all, qsizetype first, qsizetype end, const QString &keyMember)
        : items(all),
          member(keyMember)
    {
        for (qsizetype i = first; i < end; ++i)
            places.insert(keyOf(items.at(i)), i);
    }

    /// The place of an item that is equal to VALUE and was not taken before, or -1. If very many items have
    /// the same key, only some of them are compared.
    qsizetype take(const QJsonValue &value)
    {
        constexpr int mostTries = 100;
        const QString key = places.isEmpty() ? QString() : keyOf(value);
        auto place = places.constFind(key);
        for (int tries = 0; tries < mostTries && place != places.cend() && place.key() == key; ++tries) {
            if (items.at(*place) == value) {
                const qsizetype found = *place;
                places.erase(place);
                return found;
            }
            ++place;
        }
        return -1;
    }

private:
    [[nodiscard]] QString keyOf(const QJsonValue &value) const { return value[member].toString(); }

    const QJsonArray &items;
    const QString &member;
    QMultiHash<QString, qsizetype> places;
};

} // namespace

QList<qsizetype> knownItems(const QJsonArray &before, const QJsonArray &items, const QString &member)
{
    const auto [front, back] = sameItems(before, items);
    const qsizetype backStart = items.size() - back;
    const qsizetype shift = items.size() - before.size();
    Places between(before, front, before.size() - back, member);
    QList<qsizetype> known;
    known.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i)
        known.append(i < front ? i : i >= backStart ? i - shift : between.take(items.at(i)));
    return known;
}

ReadingKey readingKey(const Reading &reading, quint64 generation)
{
    return {.ownName = reading.ownName,
            .language = reading.language,
            .zone = QTimeZone::systemTimeZoneId(),
            .offsetFromUtc = reading.now.offsetFromUtc(),
            .generation = generation};
}

} // namespace tideloft::ui
