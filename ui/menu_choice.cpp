// Waiting for the choice.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/menu_choice.h"

#include <QMenu>

namespace tideloft::ui
{

// The menu itself knows only of what was clicked or chosen by key. What an assistive program presses is
// triggered and leaves the menu open; the program waits for the answer meanwhile, so the choice takes effect
// after the menu, not inside that call.
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
