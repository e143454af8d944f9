// The open conversation: its history, row by row.
#include "ui/main_window.h"

#include "ui/day_separator.h"
#include "ui/message_row.h"
#include "ui/row_list.h"

#include <QDateTime>
#include <QListWidget>

namespace tideloft::ui
{

namespace
{

ListRow makeListRow(const HistoryRow &row, QWidget *viewport)
{
    QWidget *widget = nullptr;
    if (const auto *message = std::get_if<MessageRowModel>(&row))
        widget = new MessageRow(*message, viewport);
    else
        widget = makeDaySeparator(std::get<DaySeparatorModel>(row), viewport);
    return {.widget = widget, .sizeHint = widget->sizeHint(), .spoken = spokenText(row)};
}

} // namespace

void MainWindow::onHistoryLoaded(const QString &peer, const QJsonArray &items)
{
    if (peer != currentPeer)
        return;
    messageList->clear();
    if (items.isEmpty())
        return;
    const QDateTime now = QDateTime::currentDateTime();
    const auto open = [this](const QJsonObject &item) { return openedText(item); };
    const QList<DisplayRecord> records = displayRecords(items, myUsername, open, now, language());
    QList<ListRow> rows;
    for (const HistoryRow &row : historyRows(records, now.date(), language()))
        rows.append(makeListRow(row, messageList->viewport()));
    appendRows(messageList, rows);
    messageList->scrollToBottom();
}

void MainWindow::onHistoryFailed(const QString &) {}

} // namespace tideloft::ui
