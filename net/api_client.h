// The one object through which the client talks to the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/continuations.h"
#include "net/reply_caches.h"
#include "net/request_priority.h"
#include "net/sealed_message.h"

#include <QJsonObject>
#include <QNetworkAccessManager>

#include <memory>

namespace tideloft::net
{

/// Every operation returns at once; its outcome arrives on the event loop as a signal, in the order of the
/// replies, which need not be the order of sending.
class ApiClient : public QObject
{
    Q_OBJECT

public:
    /// Reads or makes the device identifier; sends nothing.
    explicit ApiClient(QObject *parent = nullptr);

    QString currentUsername() const { return username; } ///< empty when nobody is signed in
    QString deviceId() const { return ownDeviceId; }     ///< a UUID without braces: this installation
    QString deviceName() const { return ownDeviceName; }
    bool isSignedIn() const { return !username.isEmpty(); }

    void login(const QString &name, const QString &password, bool rememberMe);
    void registerAccount(const QString &name, const QString &password);
    void logout();
    /// Empties the caches of replies. Until the next sign-in no reply is cached, and later none to a request
    /// that was sent before it.
    void clearReplyCaches();
    void fetchMe();
    void searchUsers(const QString &query);
    /// DISPLAYNAME is not sent: the service stores the bio only. CALLBACK may be empty.
    void updateProfile(const QString &displayName, const QString &bio, const ProfileCallback &callback);

    // Keys, nonces and ciphertexts are Base64 text; names stand in a path as they are.
    void fetchConversations(RequestPriority priority = RequestPriority::UserInitiated);
    void fetchHistory(const QString &peer, RequestPriority priority = RequestPriority::UserInitiated);
    void registerDeviceKey(const QString &publicKey);
    void fetchMyDeviceKeys();
    void fetchUserPublicKeys(const QString &name);
    void sendMessage(const QString &to, const SealedMessage &message);
    void sendMessage(const QString &to, const QString &text, const QString &iv, const QString &encryptedKey,
                     const QString &senderEncryptedKey, const QJsonArray &recipientKeys,
                     const QJsonArray &senderKeys)
    {
        sendMessage(to, {text, iv, encryptedKey, senderEncryptedKey, recipientKeys, senderKeys});
    }
    /// Sends TEXT as it stands, unencrypted.
    void sendMessage(const QString &to, const QString &text);

    void fetchServers();
    void fetchServer(const QString &groupId);
    void createServer(const QString &name, const QString &description);
    void uploadAvatar(const QString &localPath);
    void uploadServerIcon(const QString &groupId, const QString &localPath);

signals: // their order is part of the interface: networkError keeps its place although nothing emits it
    void loginSucceeded(const QString &username);
    void loginFailed(const QString &message);
    void registerSucceeded(const QString &username);
    void registerFailed(const QString &message);
    void meLoaded(const QJsonObject &me);
    void meFailed(const QString &message);
    void searchLoaded(const QJsonArray &users);
    void searchFailed(const QString &message);
    void conversationsLoaded(const QJsonArray &items);
    void conversationsFailed(const QString &message);
    void historyLoaded(const QString &peer, const QJsonArray &items);
    void historyFailed(const QString &message);
    void deviceKeyRegistered();
    void deviceKeyRegisterFailed(const QString &message);
    void myDeviceKeysLoaded(const QJsonArray &keys);
    void myDeviceKeysFailed(const QString &message);
    void userPublicKeysLoaded(const QString &username, const QJsonArray &keys,
                              const QString &legacyPublicKey);
    void userPublicKeysFailed(const QString &username, const QString &message);
    void messageSent();
    void messageSendFailed(const QString &message);
    void networkError(const QString &message);
    void avatarUploaded(bool ok, const QString &localPath);
    void serversLoaded(const QJsonArray &servers);
    void serverLoaded(const QJsonObject &server);
    void serverCreated(const QJsonObject &server);
    void serverIconUploaded(const QString &groupId, const QString &iconUrl);
    void serversFailed(const QString &error);

private:
    void loadOrCreateDeviceId();
    /// USER is signed in now. Replies that another user asked for are dropped, except those about sign-ins.
    void beginFor(const QString &user);
    /// The context of what handles REPLY: it goes with the user, or with this client for a sign-in.
    const QObject *contextOf(const QNetworkReply &reply) const;
    QNetworkRequest buildRequest(const QString &pathAndQuery,
                                 RequestPriority priority = RequestPriority::UserInitiated) const;
    QNetworkReply *post(const QString &pathAndQuery, const QJsonObject &body);
    void postMessage(const QJsonObject &body);
    /// Asks for a list that is asked for again and again; conditionally, if the list is cached.
    QNetworkReply *getList(const QString &path, RequestPriority priority = RequestPriority::UserInitiated);
    /// CACHE is one of this client's, or null for a reply that is not cached.
    void handleJsonReply(QNetworkReply *reply, const SuccessContinuation &onSuccess,
                         const FailureContinuation &onFailure, ReplyCache *cache = nullptr);
    static QString extractErrorMessage(const QJsonDocument &document);

    QNetworkAccessManager network;
    QNetworkCookieJar *cookieJar;
    ReplyCaches caches;
    QString username;
    QString lastUser; ///< whose profile came last, in small letters
    QString ownDeviceId;
    QString ownDeviceName;
    /// The context of what handles the replies to this user: the next user gets another.
    std::unique_ptr<QObject> userContext = std::make_unique<QObject>();
};

} // namespace tideloft::net
