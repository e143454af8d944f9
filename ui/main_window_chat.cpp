// The open conversation: its history, row by row.
#include "ui/main_window.h"

#include "ui/history_list.h"

#include <QDateTime>
#include <QListWidget>

namespace tideloft::ui
{

void MainWindow::onHistoryLoaded(const QString &peer, const QJsonArray &items)
{
    if (peer != currentPeer)
        return;
    if (peer != shownHistory || items.isEmpty())
        messageList->clear(); // nothing of one conversation is left in another, not even a selection
    shownHistory = peer;
    if (items.isEmpty())
        return;
    const QDateTime now = QDateTime::currentDateTime();
    const auto open = [this](const QJsonObject &item) { return openedText(item); };
    const QList<DisplayRecord> records = displayRecords(items, myUsername, open, now, language());
    showHistory(messageList, historyRows(records, now.date(), language()));
}

void MainWindow::onHistoryFailed(const QString &) {}

} // namespace tideloft::ui
