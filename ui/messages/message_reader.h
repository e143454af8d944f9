// Reading of messages for whoever is signed in: from the service's replies to rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/decryption_cache.h"
#include "ui/messages/conversation_cache.h"
#include "ui/messages/history_cache.h"
#include "ui/messages/history_row_models.h"

#include <utility>

namespace tideloft::ui
{

/// Opens messages, and remembers what opening them has cost: the keys, the records of the last history, and
/// the rows of the last conversation list.
/// While nobody is signed in, a late reply is still read, but nothing is remembered from that reply.
class MessageReader
{
public:
    explicit MessageReader(QString ownDeviceId) : deviceId(std::move(ownDeviceId)) {}
    Q_DISABLE_COPY_MOVE(MessageReader)
    ~MessageReader();

    /// Messages are read as USERNAME from now on. What was not opened of the conversations of another user
    /// stays closed.
    void signIn(const QString &username);
    /// Forgets the keys, the history and the conversations.
    void signOut();

    /// Keeps the reply that is the history of PEER, until the next one comes. What was not opened of another
    /// peer's stays closed.
    void keepHistory(const QString &peer, const QJsonArray &items);
    /// What was not opened stays closed.
    void forgetHistory();
    /// Whose history is kept; empty if there is none.
    [[nodiscard]] const QString &historyPeer() const { return peerOfHistory; }
    /// The rows of the kept history, as they read now in LANGUAGE. Their texts are opened when they are
    /// looked at, while the history is kept.
    QList<HistoryRow> historyRows(Language language);
    /// The rows of a conversation list, as they read now in LANGUAGE. Their previews are opened when they are
    /// looked at, until the next list is read or the conversations are forgotten.
    QList<ConversationRowModel> conversationRows(const QJsonArray &items, Language language);
    /// Previews that were not opened stay closed.
    void forgetConversations() { conversationCache.forget(); }

private:
    [[nodiscard]] Reading reading(Language language);
    OpenedText open(const QJsonObject &item);

    QString deviceId;
    QString myUsername; ///< empty while nobody is signed in
    crypto::DecryptionCache decryptionCache;
    HistoryCache historyCache;
    ConversationCache conversationCache;
    QJsonArray historyItems;
    QString peerOfHistory;
};

} // namespace tideloft::ui
