// The rail: the user's servers, and what is done with them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/rail.h"

#include "ui/lists/bounded_rows.h"
#include "ui/rail/create_server_dialog.h"
#include "ui/rail/server_button.h"
#include "ui/rail/server_menu.h"
#include "ui/rail/server_scroll.h"
#include "ui/widgets/picture_dialog.h"

#include <QBoxLayout>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void Rail::showServers(const QJsonArray &newServers)
{
    servers = newServers;
    rebuildServerRail();
}

void Rail::forgetServers()
{
    selectedServerId.clear();
    showServers({});
}

QString Rail::serverName(const QString &groupId) const
{
    return ui::serverName(servers, groupId);
}

// This function may be called from the click or the menu of a button that it deletes. So each connection
// holds its own copy of the identifier, and no caller touches the button afterwards.
void Rail::rebuildServerRail()
{
    const QString focused = serverWithFocus(serverColumn);
    qDeleteAll(std::exchange(serverButtons, {})); // each leaves the column's layout, too
    QWidget *last = railMessagesBtn;
    for (const ServerModel &server : serverModels(servers).mid(0, serversLimit)) {
        QPushButton *button = makeServerButton(server, server.groupId == selectedServerId, serverColumn);
        serverColumn->layout()->addWidget(button);
        serverButtons.append(button);
        setTabOrder(std::exchange(last, button), button); // new widgets come last on the Tab key's way
        connectServerButton(button, server.groupId);
        if (!focused.isEmpty() && server.groupId == focused) {
            button->show(); // what is hidden has no keyboard to give back when a menu closes
            button->setFocus();
        }
    }
}

void Rail::connectServerButton(QPushButton *button, const QString &groupId)
{
    // The signal gets a copy: a slot may delete this connection, and GROUPID with it.
    connect(button, &QPushButton::clicked, this, [this, groupId] { emit serverChosen(QString(groupId)); });
    connect(button, &QWidget::customContextMenuRequested, this,
            [this, groupId, button](QPoint position) { showServerMenu(groupId, button, position); });
}

// GROUPID may belong to a connection that the rebuild deletes. After the rebuild only the rail's own copy is
// read.
void Rail::selectServer(const QString &groupId)
{
    selectedServerId = groupId;
    rebuildServerRail();
    if (QPushButton *button = serverButton(serverButtons, selectedServerId))
        scrollServerIntoView(button);
}

bool Rail::focusSelectedServer()
{
    QPushButton *button = serverButton(serverButtons, selectedServerId);
    if (button)
        button->setFocus();
    return button;
}

// A list that arrives while the menu is open deletes the button, and with it the connection that holds
// SERVERID.
void Rail::showServerMenu(const QString &serverId, QWidget *button, QPoint position)
{
    const QString groupId = serverId; // NOLINT(performance-unnecessary-copy-initialization)
    const ServerMenuChoice choice = askServerMenu(button->mapToGlobal(position), language, window());
    if (choice == ServerMenuChoice::Open)
        emit serverChosen(groupId);
    if (choice != ServerMenuChoice::UploadIcon)
        return;
    const QString path =
        choosePicture(window(), text(u"Välj server-ikon"_s, u"Choose server icon"_s), language);
    if (!path.isEmpty())
        emit serverIconChosen(groupId, path);
}

void Rail::showCreateServerDialog()
{
    auto *dialog = new CreateServerDialog(language, window());
    connect(dialog, &QDialog::accepted, this,
            [this, dialog] { emit serverNamed(dialog->name(), dialog->description()); });
    dialog->exec();
}

} // namespace tideloft::ui
