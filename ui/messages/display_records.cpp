// From the service's history items to display records.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/display_records.h"

#include "crypto/messages/open_message.h"
#include "crypto/messages/trimmed_member.h"
#include "ui/messages/unreadable_message.h"

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

LazyText messageText(const QJsonObject &item, const TextOpener &opener)
{
    return crypto::isEncrypted(item) ? LazyText(item, opener) : LazyText(item.value(u"text"_s).toString());
}

TextOpener textOpener(const Reading &reading)
{
    return std::make_shared<const OpenMessage>(
        [open = reading.open, unreadable = unreadableText(reading.language)](const QJsonObject &item) {
            QString reason;
            const auto explained = [&](const QJsonObject &sealed) {
                OpenedText opened = open(sealed);
                if (opened.text.isEmpty())
                    reason = opened.reason.isEmpty() ? u"The message is empty."_s : opened.reason;
                return opened;
            };
            const QString text = shownText(item, explained, unreadable);
            return OpenedText(text, reason);
        });
}

DisplayRecord RecordReader::read(const QJsonObject &item)
{
    const QString from = crypto::trimmedMember(item, u"from"_s);
    return {.from = from,
            .text = messageText(item, opener),
            .time = messageTime(item, reading.now, times),
            .isMine = from.toLower() == reading.ownName.toLower()};
}

QList<DisplayRecord> displayRecords(const QJsonArray &items, const Reading &reading)
{
    RecordReader reader(reading);
    QList<DisplayRecord> records;
    records.reserve(items.size());
    for (const QJsonValue &value : items) {
        if (value.isObject())
            records.append(reader.read(value.toObject()));
    }
    return records;
}

} // namespace tideloft::ui
