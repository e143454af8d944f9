// A signed-in window before a loopback service, and the ways in which tests look at what it shows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/chat_rows.h"
#include "tests/support/loopback_service.h"
#include "tests/support/widget_parts.h"
#include "ui/main_window.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStringList>
#include <QTest>

class QMessageBox;

namespace tideloft::tests
{

QByteArray json(const QJsonArray &array);
QByteArray objectJson(const QJsonObject &object);

/// The message box in front, waited for; null if none came.
QMessageBox *waitForBox();

/// The service and the window before it. No refresh comes by itself: tests ask for each.
class ChatWindow
{
public:
    explicit ChatWindow(int language = 1);

    LoopbackService service;
    ui::MainWindow window;

    /// Signs in with keys and a click, and waits until the main page has its conversations.
    bool signIn(const QString &username = QStringLiteral("alice"));
    /// Asks for the conversations and the open history, as the timer does.
    void refresh();
    /// Makes ITEMS the service's conversations and waits until they are listed.
    bool showConversations(const QJsonArray &items);
    /// Opens the conversation with PEER by a click on its row, with ITEMS as its history.
    bool open(const QString &peer, const QJsonArray &items = {});
    /// Makes ITEMS the history with PEER and waits until it is shown.
    bool showHistory(const QString &peer, const QJsonArray &items);
    /// Waits until the window has handled every reply that the service has given so far.
    bool settle();
    static void click(QListWidget *list, int index) { clickRow(list, index); }

    QString deviceId() const { return ownDevice; } ///< this client's, as it told the service
    template <typename Widget> Widget *child(const char *name) const
    {
        auto *found = window.findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("The window has no %s", name);
        return found;
    }
    QListWidget *dmList() const { return child<QListWidget>("dmList"); }
    QListWidget *messageList() const { return child<QListWidget>("messageList"); }
    QListWidget *searchResults() const { return child<QListWidget>("searchResults"); }
    QLineEdit *sideSearch() const { return child<QLineEdit>("sideSearch"); }
    QLineEdit *msgInput() const { return child<QLineEdit>("msgInput"); }
    QPushButton *sendButton() const { return child<QPushButton>("sendButton"); }
    QStringList peers() const; ///< of the conversation list, from the entries' data

private:
    bool refreshAndWait(const QByteArray &request);

    int settled = 0;
    QString ownDevice;
};

} // namespace tideloft::tests
