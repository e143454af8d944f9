// The chat page: what it shows, and the field in which messages are written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/chat_page.h"

#include "ui/chat/history_list.h"
#include "ui/chat/message_field.h"
#include "ui/chat/server_notice.h"
#include "ui/lists/row_list.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void ChatPage::showHeader(const QString &title, const QString &subtitle, const QString &avatar)
{
    centerTitle->setText(title);
    centerSubtitle->setText(subtitle);
    peerAvatar->setText(avatar);
    peerAvatar->setAccessibleName(inOneLine(title));
}

void ChatPage::showPeer(const QString &peer)
{
    showHeader(peer, u"🔒 "_s + chooseText(language, u"End-to-end krypterad"_s, u"End-to-end encrypted"_s),
               initials(peer));
    leaveServer();
}

void ChatPage::showServer(const QString &title, const QString &avatar)
{
    showHeader(title, u"Server"_s, avatar);
    serverIsShown = true;
    updateField();
    messageList->clear();
    shownHistory.clear();
    const QString notice =
        chooseText(language, u"Server-chatt kommer snart. Välj en kanal från webklienten."_s,
                   u"Server chat coming soon. Select a channel from the web client."_s);
    QWidget *row = makeServerNotice(notice, messageList->viewport());
    appendRows(messageList, {{.widget = row, .sizeHint = row->sizeHint(), .spoken = notice}});
}

void ChatPage::leaveServer()
{
    if (!serverIsShown)
        return;
    serverIsShown = false;
    updateField();
    messageList->clear();
}

void ChatPage::showHistory(const QString &peer, const QList<HistoryRow> &rows)
{
    if (peer != shownHistory || rows.isEmpty())
        messageList->clear();
    shownHistory = peer;
    if (!rows.isEmpty())
        history->show(rows);
}

void ChatPage::endHistory()
{
    history->stop();
    shownHistory.clear();
}

void ChatPage::clear()
{
    leaveServer();
    messageList->clear();
    shownHistory.clear();
    showHeader({}, {}, {});
    msgInput->clear();
}

QString ChatPage::writtenText() const
{
    return msgInput->isEnabled() ? msgInput->text().trimmed() : QString();
}

void ChatPage::takeSent(const QString &sent)
{
    clearSentText(msgInput, sent);
}

void ChatPage::updateField()
{
    const bool canWrite = !serverIsShown && !isSealing;
    msgInput->setEnabled(canWrite);
    sendButton->setEnabled(canWrite);
}

void ChatPage::setSealing(bool busy)
{
    isSealing = busy;
    if (busy)
        heldFocus.take({msgInput, sendButton}, this);
    updateField();
    if (msgInput->isEnabled())
        heldFocus.giveBack();
}

void ChatPage::focusField()
{
    msgInput->setFocus();
}

bool ChatPage::fieldIsReady() const
{
    return msgInput->isVisible() && msgInput->isEnabled();
}

bool ChatPage::fieldHasFocus() const
{
    return msgInput->hasFocus() || sendButton->hasFocus();
}

void ChatPage::settleField()
{
    QTimer::singleShot(0, this, [this] {
        msgInput->parentWidget()->layout()->activate();
        msgInput->parentWidget()->updateGeometry();
    });
}

bool ChatPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == msgInput && event->type() == QEvent::KeyPress
        && isSendKey(*static_cast<QKeyEvent *>(event))) {
        emit sendClicked();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tideloft::ui
