// The rail at the window's left edge: messages, the user's servers, settings.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QJsonArray>
#include <QList>
#include <QWidget>

class QPushButton;

namespace tideloft::ui
{

/// Two buttons that tell which page is shown, and between them a button for each server.
class Rail : public QWidget
{
    Q_OBJECT

public:
    enum class Place { Messages, Settings };

    Rail(Language shownLanguage, QWidget *parent);

    void retranslate(Language newLanguage);
    void markPlace(Place place);

    /// Shows a button for each of SERVERS, as the service lists them.
    void showServers(const QJsonArray &servers);
    /// Marks the server GROUPID and scrolls its button into view.
    void selectServer(const QString &groupId);
    /// The name of the server GROUPID; empty if it has none or is not listed.
    [[nodiscard]] QString serverName(const QString &groupId) const;
    /// Gives the keyboard to the button of the marked server. False if there is none.
    bool focusSelectedServer();
    void forgetServers();

signals:
    void messagesClicked();
    void settingsClicked();
    void serverChosen(const QString &groupId);
    /// A name, not empty, and a description, both trimmed.
    void serverNamed(const QString &name, const QString &description);
    void serverIconChosen(const QString &groupId, const QString &path);

private:
    [[nodiscard]] QString text(const QString &swedish, const QString &english) const;
    void layOut();
    void rebuildServerRail();
    void connectServerButton(QPushButton *button, const QString &groupId);
    void showServerMenu(const QString &serverId, QWidget *button, QPoint position);
    void showCreateServerDialog();

    Language language;
    QJsonArray servers;
    QString selectedServerId;
    QPushButton *railMessagesBtn = nullptr;
    QWidget *serverColumn = nullptr;
    QList<QPushButton *> serverButtons;
    QPushButton *createServerBtn = nullptr;
    QPushButton *railSettingsBtn = nullptr;
};

} // namespace tideloft::ui
