// The user's servers in the rail: listing, opening and creating them, and their icons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/chat/server_notice.h"
#include "ui/lists/bounded_rows.h"
#include "ui/lists/row_list.h"
#include "ui/rail/create_server_dialog.h"
#include "ui/rail/server_button.h"
#include "ui/rail/server_scroll.h"
#include "ui/texts/initials.h"
#include "ui/widgets/menu_choice.h"
#include "ui/widgets/picture_dialog.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onServersLoaded(const QJsonArray &loaded)
{
    servers = loaded;
    rebuildServerRail();
}

void MainWindow::onServerLoaded(const QJsonObject &) {}

void MainWindow::onServerIconUploaded(const QString &, const QString &)
{
    api.fetchServers();
}

// The new server opens once the list has had time to arrive; if it has not, its identifier stands for its
// name.
void MainWindow::onServerCreated(const QJsonObject &server)
{
    const QString groupId = server.value(u"groupId"_s).toString();
    api.fetchServers();
    if (!groupId.isEmpty())
        QTimer::singleShot(500, this, [this, groupId, user = lastUsername] {
            if (user == lastUsername) // another user may have signed in since
                selectServer(groupId);
        });
}

// Runs inside the click and the menu of a button that it deletes: the connections hold their own copy of the
// identifier, and nothing of the button is touched after the call.
void MainWindow::rebuildServerRail()
{
    if (!serverColumn)
        return;
    const QString focused = serverWithFocus(serverColumn);
    while (QLayoutItem *item = serverColumn->layout()->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    QWidget *last = railMessagesBtn;
    for (const ServerModel &server : serverModels(servers).mid(0, serversLimit)) {
        QPushButton *button = makeServerButton(server, server.groupId == selectedServerId, serverColumn);
        serverColumn->layout()->addWidget(button);
        setTabOrder(std::exchange(last, button), button); // new widgets come last on the Tab key's way
        connectServerButton(button, server.groupId);
        if (!focused.isEmpty() && server.groupId == focused) {
            button->show(); // what is hidden has no keyboard to give back when a menu closes
            button->setFocus();
        }
    }
}

void MainWindow::connectServerButton(QPushButton *button, const QString &groupId)
{
    connect(button, &QPushButton::clicked, this, [this, groupId] { selectServer(groupId); });
    connect(button, &QWidget::customContextMenuRequested, this,
            [this, groupId, button](QPoint position) { showServerMenu(groupId, button, position); });
}

// The rebuild deletes the connection that may hold GROUPID: from there on only the window's own copy is read.
void MainWindow::selectServer(const QString &groupId)
{
    selectedServerId = groupId;
    rebuildServerRail();
    QPushButton *button = serverButton(serverColumn, selectedServerId);
    if (button)
        scrollServerIntoView(button);
    const bool lineHadFocus = msgInput->hasFocus() || sendButton->hasFocus();
    const QString name = serverName(servers, selectedServerId);
    showChatHeader(name.isEmpty() ? selectedServerId : name, u"Server"_s, initials(name, 1));
    centerStack->setCurrentWidget(chatPage);
    showServerNotice();
    if (lineHadFocus) // what comes next on the Tab key's way has the keyboard now
        (button ? button : chatPage)->setFocus();
}

// The conversation stays open behind the notice: its history is asked for, and what was under way is sent.
void MainWindow::showServerNotice()
{
    serverIsShown = true;
    updateMessageLine();
    messageList->clear();
    shownHistory.clear();
    const QString words = text(u"Server-chatt kommer snart. Välj en kanal från webklienten."_s,
                               u"Server chat coming soon. Select a channel from the web client."_s);
    QWidget *notice = makeServerNotice(words, messageList->viewport());
    appendRows(messageList, {{.widget = notice, .sizeHint = notice->sizeHint(), .spoken = words}});
}

void MainWindow::leaveServer()
{
    if (!serverIsShown)
        return;
    serverIsShown = false;
    updateMessageLine();
    messageList->clear();
    if (historyPeer == currentPeer)
        drawHistory();
}

int MainWindow::showCreateServerDialog()
{
    auto *dialog = new CreateServerDialog(language(), this);
    connect(dialog, &QDialog::accepted, this,
            [this, dialog] { api.createServer(dialog->name(), dialog->description()); });
    return dialog->exec();
}

// A list that arrives while the menu is open deletes the button, and with it the connection that holds
// SERVERID.
void MainWindow::showServerMenu(const QString &serverId, QWidget *button, QPoint position)
{
    const QString groupId = serverId; // NOLINT(performance-unnecessary-copy-initialization)
    QMenu menu(this);
    menu.setAccessibleName(text(u"Servermeny"_s, u"Server menu"_s));
    const QAction *upload = menu.addAction(text(u"Ladda upp server-ikon"_s, u"Upload server icon"_s));
    const QAction *open = menu.addAction(text(u"Öppna server"_s, u"Open server"_s));
    const QAction *chosen = choiceFrom(menu, button->mapToGlobal(position));
    if (chosen == upload)
        chooseServerIcon(groupId);
    else if (chosen == open)
        selectServer(groupId);
}

void MainWindow::chooseServerIcon(const QString &groupId)
{
    const QString path =
        choosePicture(this, text(u"Välj server-ikon"_s, u"Choose server icon"_s), language());
    if (!path.isEmpty())
        api.uploadServerIcon(groupId, path);
}

} // namespace tideloft::ui
