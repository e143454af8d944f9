// The open conversation: its history, row by row.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "crypto/messages/open_message.h"
#include "ui/chat/history_list.h"
#include "ui/lists/bounded_rows.h"

#include <QDateTime>
#include <QListWidget>

namespace tideloft::ui
{

void MainWindow::onHistoryLoaded(const QString &peer, const QJsonArray &items)
{
    if (peer != currentPeer)
        return;
    historyItems = items;
    historyPeer = peer;
    if (!serverIsShown)
        drawHistory();
    if (myUsername.isEmpty())
        forgetHistory();
}

void MainWindow::drawHistory()
{
    if (historyPeer != shownHistory || historyItems.isEmpty())
        messageList->clear(); // nothing of one conversation is left in another, not even a selection
    shownHistory = historyPeer;
    if (historyItems.isEmpty())
        return;
    const QDateTime now = QDateTime::currentDateTime();
    showHistory(messageList,
                historyRows(readHistory(newestItems(historyItems), now), now.date(), language()));
}

void MainWindow::forgetHistory()
{
    historyItems = {};
    historyPeer.clear();
    openedHistory.forget();
}

// With nobody signed in, a late reply is still shown, but nothing of it is remembered.
QList<DisplayRecord> MainWindow::readHistory(const QJsonArray &items, const QDateTime &now)
{
    const Reading reading{myUsername, [this](const QJsonObject &item) { return openedText(item); }, now,
                          language()};
    if (myUsername.isEmpty())
        return displayRecords(items, reading);
    crypto::rereadPrivateKey(myUsername, api.deviceId(), readingMemory);
    return openedHistory.records(items, reading, readingMemory.generation());
}

void MainWindow::onHistoryFailed(const QString &) {}

} // namespace tideloft::ui
