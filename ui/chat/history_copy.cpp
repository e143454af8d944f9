// The menu of a message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_copy.h"

#include "ui/chat/bubble_text.h"
#include "ui/chat/message_row.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QListWidget>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

/// The text of the message at POSITION of the list's viewport; null where none is.
BubbleText *messageAt(const QListWidget *list, QPoint position)
{
    QListWidgetItem *entry = list->itemAt(position);
    const auto *row = qobject_cast<MessageRow *>(entry ? list->itemWidget(entry) : nullptr);
    return row ? row->text() : nullptr;
}

// The menu runs no event loop of its own, so a refresh may delete the message while the menu is open. Its
// text can be copied even then, because the menu has a copy. Nothing can be selected any more.
void showMenu(BubbleText *message, QPoint place, Language language)
{
    auto *menu = new QMenu(message->window());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(chooseText(language, u"Meddelandemeny"_s, u"Message menu"_s));
    const QAction *copy = menu->addAction(chooseText(language, u"Kopiera"_s, u"Copy"_s));
    const QAction *selectAll = menu->addAction(chooseText(language, u"Markera allt"_s, u"Select all"_s));
    QObject::connect(copy, &QAction::triggered, menu,
                     [copied = message->copiedText()] { QGuiApplication::clipboard()->setText(copied); });
    QObject::connect(selectAll, &QAction::triggered, message, &BubbleText::selectAll);
    // An assistive program's press leaves the menu open.
    QObject::connect(menu, &QMenu::triggered, menu, &QWidget::close);
    menu->popup(place);
}

} // namespace

void copyFromHistory(QListWidget *list, const std::function<Language()> &language)
{
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(list, &QWidget::customContextMenuRequested, list, [list, language](QPoint position) {
        if (BubbleText *message = messageAt(list, position))
            showMenu(message, list->viewport()->mapToGlobal(position), language());
    });
}

} // namespace tideloft::ui
