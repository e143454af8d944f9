// The one object through which the client talks to the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/continuations.h"
#include "net/remembered_replies.h"
#include "net/repeated_array.h"
#include "net/urgency.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QNetworkAccessManager>

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
    /// Keeps nothing of earlier replies, nor of those that come until somebody signs in, nor afterwards of
    /// those that were asked for before that.
    void forgetReplies();
    void fetchMe();
    void searchUsers(const QString &query);
    /// DISPLAYNAME is not sent: the service keeps the bio only. CALLBACK may be empty.
    void updateProfile(const QString &displayName, const QString &bio, const ProfileCallback &callback);

    // Keys, nonces and ciphertexts are Base64 text; names stand in a path as they are.
    void fetchConversations(Urgency urgency = Urgency::Asked);
    void fetchHistory(const QString &peer, Urgency urgency = Urgency::Asked);
    void registerDeviceKey(const QString &publicKey);
    void fetchMyDeviceKeys();
    void fetchUserPublicKeys(const QString &name);
    /// Sends an envelope that is already sealed; RECIPIENTKEYS and SENDERKEYS are wrapped key records.
    void sendMessage(const QString &to, const QString &text, const QString &iv, const QString &encryptedKey,
                     const QString &senderEncryptedKey, const QJsonArray &recipientKeys,
                     const QJsonArray &senderKeys);
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
    /// USER is signed in now. What another user asked for is dropped when it comes, but for sign-ins.
    void beginFor(const QString &user);
    QNetworkRequest buildRequest(const QString &pathAndQuery, Urgency urgency = Urgency::Asked) const;
    QNetworkReply *post(const QString &pathAndQuery, const QJsonObject &body);
    void postMessage(const QJsonObject &body);
    /// Asks for a list that is asked for again and again: naming what is kept of it, if somebody is signed
    /// in.
    QNetworkReply *getAgain(const QString &path, Urgency urgency = Urgency::Asked);
    /// REPEATED, a member of this object, keeps the last of the replies that come again and again.
    void handleJsonReply(QNetworkReply *reply, SuccessContinuation onSuccess, FailureContinuation onFailure,
                         RepeatedArray *repeated = nullptr);
    static QString extractErrorMessage(const QJsonDocument &document);

    QNetworkAccessManager network;
    QNetworkCookieJar *cookieJar;
    RememberedReplies remembered;
    RepeatedArray conversations;
    RepeatedArray history;
    quint64 forgotten = 0;     ///< how often
    bool keepsReplies = false; ///< somebody has signed in since the last time
    QString username;
    QString lastUser; ///< whose profile came last, in small letters
    QString ownDeviceId;
    QString ownDeviceName;
};

} // namespace tideloft::net
