// The one window of the client: it hands replies to the pages, and what people do to the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/api_client.h"
#include "ui/messages/message_reader.h"
#include "ui/messages/outbox.h"
#include "ui/refresh_timer.h"
#include "ui/signed_in_user.h"
#include "ui/texts/toolkit_translator.h"

#include <QMainWindow>

class QStackedWidget;

namespace tideloft::ui
{

class MainPage;
class SignInPage;

/// Owns the service client for its whole life and shows the sign-in page or the main page, and inside the
/// main page the empty state, the open conversation or the settings.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);

    /// Chooses the language of every text from now on: 0 Swedish, 1 English.
    void setLanguageIndex(int index);
    /// Returns to the sign-in page. No request is sent, and what the main page shows stays as it is.
    void logOut();

signals:
    /// The user's new picture, round, 64 x 64.
    void avatarPixmapReady(const QPixmap &pix);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void onLoginClicked();
    void onLoginSucceeded(const QString &username);
    void onLoginFailed(const QString &message);
    void onRegisterClicked();
    void onRegisterSucceeded(const QString &username);
    void onRegisterFailed(const QString &message);
    void onMeLoaded(const QJsonObject &me);
    void onMeFailed(const QString &message);
    void onSearchClicked();
    void onSearchLoaded(const QJsonArray &users);
    void onSearchFailed(const QString &message);
    void onConversationSelected();
    void onConversationsLoaded(const QJsonArray &items);
    void onConversationsFailed(const QString &message);
    void onHistoryLoaded(const QString &peer, const QJsonArray &items);
    void onHistoryFailed(const QString &message);
    void onSendClicked();
    void onSearchUserDoubleClicked();
    void onMessageSent();
    void onMessageSendFailed(const QString &message);
    void onDeviceKeyRegistered();
    void onDeviceKeyRegisterFailed(const QString &message);
    void onUserPublicKeysLoaded(const QString &username, const QJsonArray &keys,
                                const QString &legacyPublicKey);
    void onUserPublicKeysFailed(const QString &username, const QString &message);
    void onMyDeviceKeysLoaded(const QJsonArray &keys);
    void onAvatarUploaded(bool ok, const QString &localPath);
    void onServersLoaded(const QJsonArray &servers);
    void onServerLoaded(const QJsonObject &server);
    void onServerCreated(const QJsonObject &server);
    void onServerIconUploaded(const QString &groupId, const QString &iconUrl);
    void refreshData();
    void showSettingsView();
    void showSettingsSection(const QString &section);

private:
    [[nodiscard]] Language language() const;
    void buildShell();
    void connectClient();
    void connectPages();
    void connectOutbox();
    void retranslate();
    void signInAs(const QJsonObject &me);
    void openMainPage();
    void backToChat();
    void openConversation(const QString &peer);
    void showConversation(const QString &peer);
    void saveProfile(const QString &displayName, const QString &bio);
    void chooseAvatar();

    net::ApiClient api;
    ToolkitTranslator toolkitTranslator;
    QString currentPeer; ///< whose conversation is open; empty when none is
    SignedInUser user;
    Outbox outbox{api.deviceId()};
    MessageReader reader{api.deviceId()};
    RefreshTimer *refreshTimer = new RefreshTimer(this);
    QStackedWidget *rootStack = nullptr;
    SignInPage *authPage = nullptr;
    MainPage *mainPage = nullptr;
};

} // namespace tideloft::ui
