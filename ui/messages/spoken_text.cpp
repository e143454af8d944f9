// Putting together what is said of a row.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/spoken_text.h"

#include "ui/texts/bounded_text.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QString spokenText(const ConversationRowModel &row)
{
    QStringList parts{inOneLine(row.peer), firstPart(row.preview.value(), previewLimits), row.time.value()};
    parts.removeAll({});
    return parts.join(u", "_s);
}

QString spokenText(const HistoryRow &row)
{
    if (const auto *day = std::get_if<DaySeparatorModel>(&row))
        return day->label;
    const auto &message = std::get<MessageRowModel>(row);
    QStringList parts{inOneLine(message.speaker), message.text.value(), message.clock, message.trouble()};
    parts.removeAll({});
    return parts.join(u", "_s);
}

} // namespace tideloft::ui
