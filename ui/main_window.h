// The one window of the client: every page, list and flow that the user sees.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/reading_memory.h"
#include "net/api_client.h"
#include "ui/keyboard/held_focus.h"
#include "ui/messages/opened_history.h"
#include "ui/messages/own_devices.h"
#include "ui/messages/sent_texts.h"
#include "ui/messages/sliced_sealing.h"
#include "ui/texts/text.h"
#include "ui/texts/toolkit_words.h"

#include <QJsonArray>
#include <QMainWindow>
#include <QPixmap>
#include <QTimer>

class QComboBox;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace tideloft::ui
{

/// Owns the service client for its whole life and shows the sign-in page or the main page, and inside the
/// main page the empty state, the open conversation or the settings. Its implementation is split by page and
/// flow.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);

    /// Chooses the language of every text from now on: 0 Swedish, 1 English.
    void setLanguageIndex(int index);
    /// Returns to the sign-in page. The service is not told, and what the main page shows stays as it is.
    void logOut();

signals:
    /// The user's new picture, round, 64 x 64.
    void avatarPixmapReady(const QPixmap &pix);

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
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
    // The definition may not hide the list that it fills.
    // NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
    void onServersLoaded(const QJsonArray &servers);
    void onServerLoaded(const QJsonObject &server);
    void onServerCreated(const QJsonObject &server);
    void onServerIconUploaded(const QString &groupId, const QString &iconUrl);
    void refreshData();
    void showSettingsView();
    void showSettingsSection(const QString &section);

private:
    QString text(const QString &swedish, const QString &english) const;
    Language language() const;
    OpenedText openedText(const QJsonObject &item);
    void drawHistory();
    void forgetHistory();
    QList<DisplayRecord> readHistory(const QJsonArray &items, const QDateTime &now);

    void buildShell();
    QWidget *buildAuthPage();
    QWidget *buildAuthTopbar(QWidget *page);
    QWidget *buildAuthCenter(QWidget *page);
    QWidget *buildAuthCard(QWidget *center);
    void addAuthHeading(QWidget *card, QVBoxLayout *column);
    void addAuthFields(QWidget *card, QVBoxLayout *column);
    void addAuthButtons(QWidget *card, QVBoxLayout *column);
    void connectAuthPage();
    QWidget *buildMainPage();
    QWidget *buildRail(QWidget *page);
    QWidget *buildSidebar(QWidget *page);
    QWidget *buildSideHeader(QWidget *sidebar);
    QWidget *buildSearchWrap(QWidget *sidebar);
    void buildSideLists(QWidget *sidebar);
    QWidget *buildSideFooter(QWidget *sidebar);
    void connectSidebar();
    QWidget *buildCenterPanel(QWidget *page);
    QWidget *buildEmptyState(QWidget *panel);
    QWidget *buildEmptyInner(QWidget *state);
    QWidget *buildChatPage(QWidget *panel);
    QWidget *buildChatHeader(QWidget *page);
    QWidget *buildMessageList(QWidget *page);
    QWidget *buildInputArea(QWidget *page);
    void connectClient();
    void connectChat();
    void connectKeys();

    void retranslate();
    void retranslateAccessibleNames();
    void retranslateAccessibleDescriptions();
    void applyTheme();
    void setBusy(bool busy);
    void showAuthError(const QString &message);
    void hideAuthError();
    void keepRememberCheckFor(const QString &typedName);

    void rebuildServerRail();
    void connectServerButton(QPushButton *button, const QString &groupId);
    void selectServer(const QString &groupId);
    void showServerNotice();
    void leaveServer();
    void updateMessageLine();
    int showCreateServerDialog();
    void showServerMenu(const QString &serverId, QWidget *button, QPoint position);
    void chooseServerIcon(const QString &groupId);

    void chooseAvatar();
    void forgetOtherUser();
    void forgetSettingsPage();
    void showFooterPicture();
    void confirmInFooter(const QString &confirmation);
    void showUserMenu(QWidget *footer);
    QWidget *buildProfileCard(QWidget *parent);
    void saveProfile(const QString &displayName, const QString &bio, QPushButton *saveButton);

    void showSettingsPage();
    void openSettings();
    QWidget *buildSettingsPage();
    QWidget *buildSettingsNav(QWidget *page);
    QWidget *buildSettingsAppearance();
    void addThemeButtons(QWidget *card);
    void addSwatches(QWidget *card);
    void chooseTheme(const QList<QPushButton *> &buttons, int index, const QString &selected,
                     const QString &unselected);
    void chooseSwatch(const QPushButton *clicked, const QList<QPushButton *> &swatches, Language told);
    void setAccentColor(const QString &colour);
    void showPrivacyDialog();

    void backToChat();
    void showMessages();
    void showChatHeader(const QString &title, const QString &subtitle, const QString &avatar);
    void showConversation(const QString &peer);
    void openConversation(const QString &peer);
    void searchAsTyped(const QString &typed);
    void leaveSearch();
    void pickSearchResult(QListWidgetItem *entry);
    void beginAs(const QJsonObject &me);
    void registerThisDevice();
    void encryptAndSend(const QString &peer, const QString &plainText, const QJsonArray &recipients,
                        const QJsonArray &senders);
    void sendSealed(const QString &peer, const QString &plainText, const crypto::EncryptedEnvelope &envelope);
    void followSealing();

    net::ApiClient api;
    ToolkitWords toolkitWords;
    QString currentPeer;
    QString myUsername;
    QString lastUsername;   ///< who is signed in, or was last
    QString myBio;          ///< as the profile reply had it, or as it was saved since
    QString rememberedUser; ///< for whom "Remember me" was ticked; empty once somebody has touched it
    QString pendingMessageText;
    SentTexts sentTexts;
    OwnDevices myDevices;
    QJsonArray conversationsData;
    QJsonArray searchResultsData;
    bool searchIsLeft = false; ///< by Escape: what was asked for before is not shown any more
    QTimer *refreshTimer = nullptr;

    QStackedWidget *rootStack = nullptr;
    QWidget *authPage = nullptr;
    QWidget *mainPage = nullptr;

    QComboBox *langCombo = nullptr;
    QLabel *authTitle = nullptr;
    QLabel *authSubtitle = nullptr;
    QLineEdit *usernameField = nullptr;
    QLineEdit *passwordField = nullptr;
    QCheckBox *rememberCheck = nullptr;
    QPushButton *primaryButton = nullptr;
    QPushButton *ghostButton = nullptr;
    QLabel *authError = nullptr;
    HeldFocus heldFocus; ///< while the sign-in page is busy

    QWidget *rail = nullptr;
    QPushButton *railMessagesBtn = nullptr;
    QPushButton *railSettingsBtn = nullptr;
    QLabel *sidebarTitle = nullptr;
    QLineEdit *sideSearch = nullptr;
    QPushButton *addDmBtn = nullptr;
    QListWidget *searchResults = nullptr;
    QListWidget *dmList = nullptr;
    QLabel *myName = nullptr;
    QLabel *myStatus = nullptr;
    QLabel *footerAvatar = nullptr;
    QPixmap footerAvatarPixmap;
    QString pictureOwner; ///< who chose the picture that was uploaded last
    QPushButton *quilloryBtn = nullptr;

    QStackedWidget *centerStack = nullptr;
    QWidget *emptyState = nullptr;
    QWidget *chatPage = nullptr;
    QLabel *peerAvatar = nullptr;
    QLabel *centerTitle = nullptr;
    QLabel *centerSubtitle = nullptr;
    QListWidget *messageList = nullptr;
    OpenedHistory openedHistory;
    QJsonArray historyItems;    ///< the last reply for currentPeer, which may wait behind a server's notice
    QString historyPeer;        ///< whose reply that is
    QString shownHistory;       ///< whose history messageList shows; empty while it shows a server's notice
    bool serverIsShown = false; ///< whether the chat page shows a server instead of the conversation
    QLineEdit *msgInput = nullptr;
    QPushButton *sendButton = nullptr;
    SlicedSealing sealing; ///< of the message that is being sent
    HeldFocus lineFocus;   ///< of msgInput or sendButton, meanwhile
    QPushButton *emptyActionBtn = nullptr;

    QJsonArray servers;
    QString selectedServerId;
    QWidget *serverColumn = nullptr;
    QPushButton *createServerBtn = nullptr;
    QWidget *settingsPage = nullptr;
    QPlainTextEdit *bioField = nullptr; ///< of the settings page
    QListWidget *settingsNavList = nullptr;
    QStackedWidget *settingsStack = nullptr;
    QString currentAccent;
    bool darkTheme = true;
    crypto::ReadingMemory readingMemory;
};

} // namespace tideloft::ui
