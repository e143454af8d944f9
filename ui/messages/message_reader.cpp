// Opening messages, with and without a user to remember them for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/message_reader.h"

#include "crypto/messages/open_message.h"
#include "ui/lists/bounded_rows.h"

namespace tideloft::ui
{

void MessageReader::signOut()
{
    myUsername.clear();
    decryptionCache.clear();
    forgetHistory();
}

void MessageReader::keepHistory(const QString &peer, const QJsonArray &items)
{
    if (peer != peerOfHistory)
        historyCache.forget();
    historyItems = items;
    peerOfHistory = peer;
}

void MessageReader::forgetHistory()
{
    historyItems = {};
    peerOfHistory.clear();
    historyCache.forget();
}

OpenedText MessageReader::open(const QJsonObject &item)
{
    QString reason;
    const QString text =
        myUsername.isEmpty()
            ? crypto::decryptMessageText(item, myUsername, deviceId, &reason)
            : crypto::decryptMessageText(item, myUsername, deviceId, decryptionCache, &reason);
    return {text, reason};
}

QList<HistoryRow> MessageReader::historyRows(Language language)
{
    if (historyItems.isEmpty())
        return {};
    const QDateTime now = QDateTime::currentDateTime();
    const Reading reading{myUsername, [this](const QJsonObject &item) { return open(item); }, now, language};
    if (!myUsername.isEmpty())
        crypto::rereadPrivateKey(myUsername, deviceId, decryptionCache);
    const QList<DisplayRecord> records =
        historyCache.records(newestItems(historyItems), reading, decryptionCache.generation());
    return ui::historyRows(records, now.date(), language);
}

QList<ConversationRowModel> MessageReader::conversationRows(const QJsonArray &items, Language language)
{
    return ui::conversationRows(
        items, [this](const QJsonObject &item) { return open(item); }, QDateTime::currentDateTime(),
        language);
}

} // namespace tideloft::ui
