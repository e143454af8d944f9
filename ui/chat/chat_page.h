// The open conversation: header, history, the field to write in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/keyboard/held_focus.h"
#include "ui/messages/history_row_models.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tideloft::ui
{

class HistoryList;

/// Shows a conversation or, in its place, the notice of a server.
class ChatPage : public QWidget
{
    Q_OBJECT

public:
    ChatPage(Language shownLanguage, QWidget *parent);
    void retranslate(Language newLanguage);

    /// The header of PEER. If a server's notice stood here it goes, and the history comes with showHistory().
    void showPeer(const QString &peer);
    /// Header and notice of a server, which is called TITLE and marked with AVATAR.
    void showServer(const QString &title, const QString &avatar);
    [[nodiscard]] bool showsServer() const { return serverIsShown; }
    /// Makes the list show PEER's history. Nothing of another conversation is left, not even a selection.
    void showHistory(const QString &peer, const QList<HistoryRow> &rows);
    /// Ends the work on the history. Its rows stay on screen, but no more of its messages are opened, and the
    /// next history is shown as a new one.
    void endHistory();
    /// Empties header, history and field.
    void clear();

    /// What is written, trimmed; empty while the field is disabled.
    [[nodiscard]] QString writtenText() const;
    /// Takes SENT, a text that has arrived, out of the field; what was typed behind it stays.
    void takeSent(const QString &sent);
    /// Disables the field while a message is being sealed; the keyboard waits for it.
    void setSealing(bool busy);
    void focusField();
    /// Whether the field is on screen and can be written in.
    [[nodiscard]] bool fieldIsReady() const;
    /// Whether the keyboard is at the field or its button.
    [[nodiscard]] bool fieldHasFocus() const;
    /// Lays out the field once more when the page is on screen.
    void settleField();

signals:
    void sendClicked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeHeader();
    QListWidget *makeMessageList();
    QWidget *makeInputArea();
    void connectParts();
    void showHeader(const QString &title, const QString &subtitle, const QString &avatar);
    void leaveServer();
    void updateField();

    Language language;
    QLabel *peerAvatar = nullptr;
    QLabel *centerTitle = nullptr;
    QLabel *centerSubtitle = nullptr;
    QListWidget *messageList = nullptr;
    HistoryList *history = nullptr;
    QLineEdit *msgInput = nullptr;
    QPushButton *sendButton = nullptr;
    QString shownHistory;       ///< whose history the list shows; empty while it shows a server's notice
    bool serverIsShown = false; ///< whether the page shows a server instead of the conversation
    bool isSealing = false;
    HeldFocus heldFocus; ///< of the field or its button, meanwhile
};

} // namespace tideloft::ui
