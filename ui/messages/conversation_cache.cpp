// Which conversations of a reply are known.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/conversation_cache.h"

#include "ui/lists/bounded_rows.h"
#include "ui/messages/unreadable_message.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void ConversationCache::forget()
{
    for (const ConversationRowModel &row : std::as_const(rowsBefore))
        row.preview.close(unreadablePreview(key.language));
    itemsBefore = {};
    rowsBefore.clear();
}

/// The rows of ITEMS, also of those that name no peer.
QList<ConversationRowModel> ConversationCache::follow(const QJsonArray &items, const Reading &reading) const
{
    const QList<qsizetype> places = knownItems(itemsBefore, items, u"peer"_s);
    const ConversationReader reader(reading);
    QList<ConversationRowModel> rows;
    qsizetype listed = 0;
    for (qsizetype i = 0; i < items.size() && listed < conversationsLimit; ++i) {
        const qsizetype place = places.at(i);
        const bool isKnown = place >= 0 && place < rowsBefore.size();
        rows.append(isKnown ? rowsBefore.at(place) : reader.read(items.at(i)));
        listed += rows.last().peer.isEmpty() ? 0 : 1;
    }
    return rows;
}

QList<ConversationRowModel> ConversationCache::rows(const QJsonArray &items, const Reading &reading,
                                                    quint64 generation)
{
    const ReadingKey now = readingKey(reading, generation);
    if (now != key || reading.now.date() != today)
        forget();
    key = now;
    today = reading.now.date();
    rowsBefore = follow(items, reading);
    itemsBefore = items;
    QList<ConversationRowModel> rows = rowsBefore;
    rows.removeIf([](const ConversationRowModel &row) { return row.peer.isEmpty(); });
    return rows;
}

} // namespace tideloft::ui
