// Opening messages, with and without a user to remember them for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/message_reader.h"

#include "crypto/messages/open_message.h"
#include "ui/lists/bounded_rows.h"

namespace tideloft::ui
{

MessageReader::~MessageReader()
{
    forgetHistory();
    forgetConversations();
}

void MessageReader::signIn(const QString &username)
{
    if (username != myUsername)
        forgetConversations();
    myUsername = username;
}

void MessageReader::signOut()
{
    myUsername.clear();
    decryptionCache.clear();
    forgetHistory();
    forgetConversations();
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

/// How messages are read now, with the key file as it is now.
Reading MessageReader::reading(Language language)
{
    if (!myUsername.isEmpty())
        crypto::rereadPrivateKey(myUsername, deviceId, decryptionCache);
    return {myUsername, [this](const QJsonObject &item) { return open(item); }, QDateTime::currentDateTime(),
            language};
}

QList<HistoryRow> MessageReader::historyRows(Language language)
{
    if (historyItems.isEmpty())
        return {};
    const Reading now = reading(language);
    const QList<DisplayRecord> records =
        historyCache.records(newestItems(historyItems), now, decryptionCache.generation());
    return ui::historyRows(records, now.now.date(), language);
}

QList<ConversationRowModel> MessageReader::conversationRows(const QJsonArray &items, Language language)
{
    const Reading now = reading(language);
    return conversationCache.rows(items, now, decryptionCache.generation());
}

} // namespace tideloft::ui
