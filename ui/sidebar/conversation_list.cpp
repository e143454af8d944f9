// The entries of conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/conversation_list.h"

#include "ui/lists/row_reconciler.h"
#include "ui/sidebar/conversation_row.h"
#include "ui/texts/bounded_text.h"

#include <QListWidget>

namespace tideloft::ui
{

namespace
{

ListRow makeListRow(const ConversationRowModel &model, QWidget *viewport)
{
    return {.widget = makeConversationRow(model, viewport),
            .flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled,
            .sizeHint = QSize(0, 62),
            .user = model.peer,
            .spoken = spokenText({.peer = inOneLine(model.peer),
                                  .preview = firstPart(model.preview, previewLimits),
                                  .time = model.time})};
}

// For the keyboard only: the row counts as current again, but nothing marks it, and who has scrolled
// elsewhere stays there.
void keepCurrentRow(QListWidget *list, const QString &user)
{
    list->setAutoScroll(false);
    for (int i = 0; !user.isEmpty() && i < list->count(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() == user) {
            list->setCurrentRow(i, QItemSelectionModel::NoUpdate);
            break;
        }
    }
    list->setAutoScroll(true);
}

} // namespace

void showConversations(QListWidget *list, const QList<ConversationRowModel> &rows)
{
    const QListWidgetItem *current = list->currentItem();
    const QString user = current ? current->data(Qt::UserRole).toString() : QString();
    list->selectionModel()->clear(); // else the list makes a neighbour current when the current row goes
    showRows<ConversationRowModel>(list, rows, makeListRow);
    keepCurrentRow(list, user);
}

} // namespace tideloft::ui
