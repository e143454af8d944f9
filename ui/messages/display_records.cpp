// From the service's history items to display records.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/display_records.h"

#include "crypto/messages/open_message.h"
#include "crypto/messages/trimmed_member.h"
#include "ui/messages/unreadable_message.h"
#include "ui/texts/message_time.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QString shownText(const QJsonObject &item, const OpenMessage &open, const QString &unreadable)
{
    if (!crypto::isEncrypted(item))
        return item.value(u"text"_s).toString();
    const QString opened = open(item).text;
    return opened.isEmpty() ? unreadable : opened;
}

DisplayRecord displayRecord(const QJsonObject &item, const Reading &reading)
{
    const QString from = crypto::trimmedMember(item, u"from"_s);
    QString reason;
    const auto open = [&](const QJsonObject &sealed) {
        OpenedText opened = reading.open(sealed);
        if (opened.text.isEmpty())
            reason = opened.reason.isEmpty() ? u"The message is empty."_s : opened.reason;
        return opened;
    };
    const QString text = shownText(item, open, unreadableText(reading.language));
    return {.from = from,
            .text = text,
            .time = messageTime(item, reading.now),
            .isMine = from.toLower() == reading.ownName.toLower(),
            .reason = reason};
}

QList<DisplayRecord> displayRecords(const QJsonArray &items, const Reading &reading)
{
    QList<DisplayRecord> records;
    records.reserve(items.size());
    for (const QJsonValue &value : items) {
        if (value.isObject())
            records.append(displayRecord(value.toObject(), reading));
    }
    return records;
}

} // namespace tideloft::ui
