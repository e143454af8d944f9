// From the service's history items to display records.
#include "ui/display_records.h"

#include "crypto/open_message.h"
#include "ui/message_time.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QString shownText(const QJsonObject &item, const OpenMessage &open, const QString &unreadable)
{
    if (!crypto::isEncrypted(item))
        return item.value(u"text"_s).toString();
    const QString opened = open(item);
    return opened.isEmpty() ? unreadable : opened;
}

QList<DisplayRecord> displayRecords(const QJsonArray &items, const QString &ownName, const OpenMessage &open,
                                    const QDateTime &now, Language language)
{
    QList<DisplayRecord> records;
    records.reserve(items.size());
    const QString unreadable =
        chooseText(language, u"🔒 Meddelandet kunde inte visas"_s, u"🔒 Message could not be displayed"_s);
    const QString ownLowered = ownName.toLower();
    for (const QJsonValue &value : items) {
        if (!value.isObject())
            continue;
        const QJsonObject item = value.toObject();
        const QString from = item.value(u"from"_s).toString().trimmed();
        records.append({.from = from,
                        .text = shownText(item, open, unreadable),
                        .time = messageTime(item, now),
                        .isMine = from.toLower() == ownLowered});
    }
    return records;
}

} // namespace tideloft::ui
