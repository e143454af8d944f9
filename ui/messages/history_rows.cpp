// From display records to rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/history_rows.h"

#include "ui/messages/unreadable_message.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/message_time.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

MessageRowModel messageRow(const DisplayRecord &record, GroupPosition position, Language language)
{
    MessageRowModel row{.isMine = record.isMine, .position = position, .text = record.text};
    row.speaker = record.isMine ? chooseText(language, u"Du"_s, u"You"_s) : record.from;
    row.clock = clockText(record.time);
    if (row.showsSender())
        row.sender = record.from;
    if (position == GroupPosition::Single || position == GroupPosition::Last)
        row.time = row.clock;
    if (!record.reason.isEmpty())
        row.trouble = messageTrouble(record.reason, language);
    return row;
}

/// Cuts every text to the part that is drawn. All texts share one limit, and the newest messages get their
/// part first: they are at the end, where the list is scrolled to.
void boundMessages(QList<HistoryRow> &rows)
{
    qint64 left = historyEffort;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        auto *message = std::get_if<MessageRowModel>(&*row);
        if (!message)
            continue;
        TextLimits limits = messageLimits;
        limits.effort = qBound(smallestEffort, left, messageLimits.effort);
        message->text = firstPart(message->text, limits);
        left -= drawingEffort(message->text);
    }
}

} // namespace

QList<HistoryRow> historyRows(const QList<DisplayRecord> &records, QDate today, Language language)
{
    QList<HistoryRow> rows;
    const QList<GroupPosition> positions = groupPositions(records);
    QDate separated; // the date of the last separator
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QDate date = records.at(i).time.date();
        if (date != separated) {
            rows.append(DaySeparatorModel{dayLabel(date, today, language)});
            separated = date;
        }
        rows.append(messageRow(records.at(i), positions.at(i), language));
    }
    boundMessages(rows);
    return rows;
}

size_t qHash(const HistoryRow &row, size_t seed) // clazy:exclude=qhash-namespace
{
    if (const auto *day = std::get_if<DaySeparatorModel>(&row))
        return qHash(day->label, seed);
    const auto &message = std::get<MessageRowModel>(row);
    return qHashMulti(seed, message.speaker, message.text, message.clock);
}

QString spokenText(const HistoryRow &row)
{
    if (const auto *day = std::get_if<DaySeparatorModel>(&row))
        return day->label;
    const auto &message = std::get<MessageRowModel>(row);
    QStringList parts{inOneLine(message.speaker), message.text, message.clock, message.trouble};
    parts.removeAll({});
    return parts.join(u", "_s);
}

} // namespace tideloft::ui
