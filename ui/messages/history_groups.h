// Which messages of a history stand together as one group of their sender.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/display_records.h"

#include <QList>

namespace tideloft::ui
{

/// A message's place in its group.
enum class GroupPosition { Single, First, Middle, Last };

/// Whether a message continues the group of the one before it: same sender, less than 300 s later. Before the
/// first message stands an empty record.
bool joinsPrevious(const DisplayRecord &previous, const DisplayRecord &current);

/// Whether the message after this one continues its group: same sender, at most 299 s later, same local date.
bool joinsNext(const DisplayRecord &current, const DisplayRecord &next);

/// The position of every record, in order.
QList<GroupPosition> groupPositions(const QList<DisplayRecord> &records);

} // namespace tideloft::ui
