// From the service's conversation and search items to rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/conversation_rows.h"

#include "crypto/messages/trimmed_member.h"
#include "ui/lists/bounded_rows.h"
#include "ui/messages/unreadable_message.h"
#include "ui/texts/message_time.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QList<ConversationRowModel> conversationRows(const QJsonArray &items, const OpenMessage &open,
                                             const QDateTime &now, Language language)
{
    const QString unreadable = unreadablePreview(language);
    QList<ConversationRowModel> rows;
    for (const QJsonValue &value : items) {
        const QJsonObject item = value.toObject();
        const QString peer = crypto::trimmedMember(item, u"peer"_s);
        if (peer.isEmpty())
            continue;
        if (rows.size() == conversationsLimit)
            break; // before its message is opened
        rows.append({.peer = peer,
                     .preview = shownText(item, open, unreadable),
                     .time = conversationTimeText(item, now)});
    }
    return rows;
}

size_t qHash(const ConversationRowModel &row, size_t seed)
{
    return qHashMulti(seed, row.peer, row.preview, row.time);
}

QString spokenText(const ConversationRowModel &row)
{
    QStringList parts{row.peer, row.preview, row.time};
    parts.removeAll({});
    return parts.join(u", "_s);
}

QStringList foundUsers(const QJsonArray &users)
{
    QStringList names;
    for (const QJsonValue &value : users) {
        const QString name = crypto::trimmedMember(value.toObject(), u"username"_s);
        if (!name.isEmpty() && names.size() < foundUsersLimit)
            names.append(name);
    }
    return names;
}

} // namespace tideloft::ui
