// Waiting for the choice.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/menu_choice.h"

#include <QMenu>

namespace tideloft::ui
{

// QMenu::exec() returns only an entry that was clicked or chosen by key. An assistive program triggers an
// entry directly, and the menu stays open. That program waits until the signal has been handled, so the
// signal only closes the menu. The caller acts on the entry after exec() has returned.
const QAction *choiceFrom(QMenu &menu, QPoint place)
{
    const QAction *chosen = nullptr;
    QObject::connect(&menu, &QMenu::triggered, &menu, [&menu, &chosen](const QAction *entry) {
        chosen = entry;
        menu.close();
    });
    menu.exec(place);
    return chosen;
}

} // namespace tideloft::ui
