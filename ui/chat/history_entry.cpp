// What an entry tells its list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_entry.h"

#include "ui/messages/spoken_text.h"

namespace tideloft::ui
{

namespace
{

// A message of one line, in the client's fonts.
QSize estimatedSize(const HistoryRow &row)
{
    const auto *message = std::get_if<MessageRowModel>(&row);
    if (!message)
        return {0, 44};
    const int height = 36 + (message->showsSender() ? 18 : 0) + (message->time.isEmpty() ? 0 : 20)
                       + (message->startsGroup() ? 6 : 0);
    return {0, height};
}

} // namespace

HistoryEntry::HistoryEntry() : QListWidgetItem(nullptr, entryType)
{
    setFlags(Qt::NoItemFlags);
}

QVariant HistoryEntry::data(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return QString(); // the place of an entry's widget is that of its text
    case Qt::SizeHintRole:
        return applied;
    case Qt::AccessibleTextRole: {
        const QString spoken = spokenText(shownRow);
        return spoken.isEmpty() ? QVariant() : spoken;
    }
    default:
        return {};
    }
}

void HistoryEntry::setRow(const HistoryRow &row)
{
    shownRow = row;
    hasMeasure = false;
    measure.text = measure.wrapped = {};
    if (!applied.isValid())
        measure.row = applied = estimatedSize(row);
}

void HistoryEntry::forgetMeasure(int listWidth, bool fontsAreNew)
{
    hasMeasure = false;
    applied.setWidth(qMin(applied.width(), listWidth));
    if (fontsAreNew)
        measure.text = measure.wrapped = {};
}

void HistoryEntry::setMeasure(const RowSize &size)
{
    measure = size;
    hasMeasure = true;
}

bool HistoryEntry::applySize()
{
    return std::exchange(applied, measure.row) != measure.row;
}

} // namespace tideloft::ui
