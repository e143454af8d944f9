// From the service's conversation and search items to rows.
#include "ui/conversation_rows.h"

#include "crypto/open_message.h"
#include "ui/message_time.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QString preview(const QJsonObject &item, const OpenMessage &open, Language language)
{
    if (!crypto::isEncrypted(item))
        return item.value(u"text"_s).toString();
    const QString opened = open(item);
    if (!opened.isEmpty())
        return opened;
    return chooseText(language, u"🔒 Krypterat meddelande"_s, u"🔒 Encrypted message"_s);
}

} // namespace

QList<ConversationRowModel> conversationRows(const QJsonArray &items, const OpenMessage &open,
                                             const QDateTime &now, Language language)
{
    QList<ConversationRowModel> rows;
    for (const QJsonValue &value : items) {
        const QJsonObject item = value.toObject();
        const QString peer = item.value(u"peer"_s).toString().trimmed();
        if (peer.isEmpty())
            continue;
        rows.append({.peer = peer,
                     .preview = preview(item, open, language),
                     .time = conversationTimeText(item, now)});
    }
    return rows;
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
        const QString name = value.toObject().value(u"username"_s).toString().trimmed();
        if (!name.isEmpty())
            names.append(name);
    }
    return names;
}

} // namespace tideloft::ui
