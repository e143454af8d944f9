// From display records to rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/history_row_models.h"

#include "ui/messages/unreadable_message.h"
#include "ui/texts/message_time.h"

#include <tuple>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

MessageRowModel messageRow(const DisplayRecord &record, GroupPosition position, Language language)
{
    MessageRowModel row{
        .isMine = record.isMine, .position = position, .text = record.text, .language = language};
    row.speaker = record.isMine ? chooseText(language, u"Du"_s, u"You"_s) : record.from;
    row.clock = clockText(record.time);
    if (row.showsSender())
        row.sender = record.from;
    if (position == GroupPosition::Single || position == GroupPosition::Last)
        row.time = row.clock;
    return row;
}

} // namespace

bool MessageRowModel::operator==(const MessageRowModel &other) const
{
    const auto parts = [](const MessageRowModel &row) {
        return std::tie(row.isMine, row.position, row.sender, row.text, row.time, row.speaker, row.clock);
    };
    if (parts(*this) != parts(other))
        return false;
    return language == other.language || (text.isOpen() && text.reason().isEmpty());
}

QString MessageRowModel::trouble() const
{
    const QString &reason = text.reason();
    return reason.isEmpty() ? QString() : messageTrouble(reason, language);
}

QList<HistoryRow> historyRows(const QList<DisplayRecord> &records, QDate today, Language language)
{
    QList<HistoryRow> rows;
    rows.reserve(records.size());
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
    return rows;
}

size_t qHash(const HistoryRow &row, size_t seed) // clazy:exclude=qhash-namespace
{
    if (const auto *day = std::get_if<DaySeparatorModel>(&row))
        return qHash(day->label, seed);
    const auto &message = std::get<MessageRowModel>(row);
    return qHashMulti(seed, message.speaker, message.text, message.clock);
}

} // namespace tideloft::ui
