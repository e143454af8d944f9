// From the service's conversation items to rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/conversation_row_models.h"

#include "crypto/messages/trimmed_member.h"
#include "ui/lists/bounded_rows.h"
#include "ui/messages/unreadable_message.h"
#include "ui/texts/message_time.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

ConversationReader::ConversationReader(const Reading &reading)
    : previewOpener(std::make_shared<const OpenMessage>(
        [open = reading.open, unreadable = unreadablePreview(reading.language)](const QJsonObject &item) {
            return shownText(item, open, unreadable);
        })),
      timeOpener(std::make_shared<const OpenMessage>(
          [now = reading.now](const QJsonObject &item) { return conversationTimeText(item, now); }))
{
}

ConversationRowModel ConversationReader::read(const QJsonValue &item) const
{
    const QJsonObject object = item.toObject();
    const QString peer = crypto::trimmedMember(object, u"peer"_s);
    if (peer.isEmpty())
        return {};
    return {.peer = peer, .preview = messageText(object, previewOpener), .time = {object, timeOpener}};
}

QList<ConversationRowModel> conversationRows(const QJsonArray &items, const Reading &reading)
{
    const ConversationReader reader(reading);
    QList<ConversationRowModel> rows;
    for (const QJsonValue &item : items) {
        if (rows.size() == conversationsLimit)
            break;
        if (const ConversationRowModel row = reader.read(item); !row.peer.isEmpty())
            rows.append(row);
    }
    return rows;
}

size_t qHash(const ConversationRowModel &row, size_t seed)
{
    return qHashMulti(seed, row.peer, row.preview, row.time);
}

} // namespace tideloft::ui
