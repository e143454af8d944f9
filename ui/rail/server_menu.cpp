// What can be done with a server.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/server_menu.h"

#include "ui/widgets/menu_choice.h"

#include <QMenu>
#include <QPoint>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

ServerMenuChoice askServerMenu(QPoint place, Language language, QWidget *window)
{
    QMenu menu(window);
    menu.setAccessibleName(chooseText(language, u"Servermeny"_s, u"Server menu"_s));
    const QAction *upload =
        menu.addAction(chooseText(language, u"Ladda upp server-ikon"_s, u"Upload server icon"_s));
    const QAction *open = menu.addAction(chooseText(language, u"Öppna server"_s, u"Open server"_s));
    const QAction *chosen = choiceFrom(menu, place);
    if (chosen && chosen == open)
        return ServerMenuChoice::Open;
    return chosen && chosen == upload ? ServerMenuChoice::UploadIcon : ServerMenuChoice::None;
}

} // namespace tideloft::ui
