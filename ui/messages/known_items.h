// Which items of a reply are known from the one before, and when they still read the same.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/display_records.h"

namespace tideloft::ui
{

/// For each of ITEMS the index of an equal one of BEFORE, or -1. None is named twice. Items that moved are
/// found by their MEMBER, a text in which most of them differ.
QList<qsizetype> knownItems(const QJsonArray &before, const QJsonArray &items, const QString &member);

/// What besides an item decides how it reads.
struct ReadingKey {
    QString ownName;
    Language language = Language::English;
    QByteArray zone;       ///< the times shown are local
    int offsetFromUtc = 0; ///< s; a zone's rules can be replaced under its name
    quint64 generation = 0;

    bool operator==(const ReadingKey &) const = default;
};

/// GENERATION changes whenever a message may open to another text, or one that failed may open.
ReadingKey readingKey(const Reading &reading, quint64 generation);

} // namespace tideloft::ui
