// The history that is shown, as it was read: what comes again unchanged is neither read nor opened again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/known_items.h"

namespace tideloft::ui
{

/// Remembers the records of one reply for the next, also those of messages that could not be opened, or were
/// not yet.
class HistoryCache
{
public:
    /// displayRecords() of ITEMS. What is remembered is not used when GENERATION has changed, because
    /// messages may open to other texts then, and not for another user, language or time zone.
    QList<DisplayRecord> records(const QJsonArray &items, const Reading &reading, quint64 generation);
    /// Messages that were not opened can never be opened from now on.
    void forget();

private:
    struct Known {
        DisplayRecord record;
        bool isMessage = false; ///< only an object is one
        bool isTimed = false;
    };

    static Known read(const QJsonValue &value, RecordReader &reader);
    QList<Known> follow(const QJsonArray &items, const Reading &reading) const;

    ReadingKey key;
    QJsonArray itemsBefore;
    QList<Known> knownBefore; ///< one for each of itemsBefore
};

} // namespace tideloft::ui
