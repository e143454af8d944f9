// What an entry tells its list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/conversation_entry.h"

#include "ui/messages/spoken_text.h"

#include <QAccessible>

namespace tideloft::ui
{

ConversationEntry::ConversationEntry() : QListWidgetItem(nullptr, entryType)
{
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
}

QVariant ConversationEntry::data(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return QString(); // the place of an entry's widget is that of its text
    case Qt::SizeHintRole:
        return QSize(0, height);
    case Qt::AccessibleTextRole:
        return spokenText(shownRow);
    default:
        return QListWidgetItem::data(role);
    }
}

void ConversationEntry::setRow(const ConversationRowModel &row)
{
    shownRow = row;
    isOutdated = true;
    setData(Qt::UserRole, row.peer);
    if (QAccessible::isActive())
        setFlags(flags()); // the list says that the entry has changed
}

void ConversationEntry::setWidgetMade(bool isMade)
{
    hasWidget = isMade;
    isOutdated = false;
}

} // namespace tideloft::ui
