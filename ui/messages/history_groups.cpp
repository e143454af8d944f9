// Grouping of messages by sender and time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/history_groups.h"

namespace tideloft::ui
{

namespace
{

bool sameSender(const DisplayRecord &one, const DisplayRecord &other)
{
    return one.from.toLower() == other.from.toLower();
}

GroupPosition position(bool joinedBefore, bool joinedAfter)
{
    if (joinedAfter)
        return joinedBefore ? GroupPosition::Middle : GroupPosition::First;
    return joinedBefore ? GroupPosition::Last : GroupPosition::Single;
}

} // namespace

// An invalid time is 0 s away from every other, so a message whose time cannot be read joins the one before
// it.
bool joinsPrevious(const DisplayRecord &previous, const DisplayRecord &current)
{
    return sameSender(previous, current) && previous.time.secsTo(current.time) < 300;
}

// Only this side compares the dates, so a message just after midnight can be the last of a group that stands
// above the day separator.
bool joinsNext(const DisplayRecord &current, const DisplayRecord &next)
{
    return sameSender(current, next) && current.time.secsTo(next.time) <= 299
           && current.time.date() == next.time.date();
}

QList<GroupPosition> groupPositions(const QList<DisplayRecord> &records)
{
    QList<GroupPosition> positions;
    positions.reserve(records.size());
    for (qsizetype i = 0; i < records.size(); ++i) {
        const bool before = joinsPrevious(i > 0 ? records.at(i - 1) : DisplayRecord{}, records.at(i));
        const bool after = i + 1 < records.size() && joinsNext(records.at(i), records.at(i + 1));
        positions.append(position(before, after));
    }
    return positions;
}

} // namespace tideloft::ui
