// Making every row of a conversation list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/eager_conversations.h"

#include "tests/support/eager_rows.h"
#include "ui/messages/spoken_text.h"
#include "ui/sidebar/conversation_row.h"

namespace tideloft::tests
{

namespace
{

ui::ListRow makeListRow(const ui::ConversationRowModel &model, QWidget *viewport)
{
    return {.widget = ui::makeConversationRow(model, viewport),
            .flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled,
            .sizeHint = QSize(0, 62),
            .user = model.peer,
            .spoken = ui::spokenText(model)};
}

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

void showConversationsEagerly(QListWidget *list, const QList<ui::ConversationRowModel> &rows)
{
    for (const ui::ConversationRowModel &row : rows)
        ui::spokenText(row); // opens it: texts are compared
    const QListWidgetItem *current = list->currentItem();
    const QString user = current ? current->data(Qt::UserRole).toString() : QString();
    list->selectionModel()->clear();
    showRows<ui::ConversationRowModel>(list, rows, makeListRow);
    keepCurrentRow(list, user);
}

} // namespace tideloft::tests
