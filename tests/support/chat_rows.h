// What the lists of conversations and messages show, taken apart.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QStringList>

namespace tideloft::tests
{

/// The parts of a conversation's row.
struct ShownConversation {
    QWidget *row = nullptr;
    QWidget *avatarPlace = nullptr;
    QLayout *textBlock = nullptr;
    QLayout *timeBlock = nullptr;
    QLabel *name = nullptr;
    QLabel *preview = nullptr;
    QLabel *time = nullptr;
};
ShownConversation shownConversation(const QListWidget *list, int index);

/// The parts of a message's row; null for what it does not show.
struct ShownMessage {
    QWidget *row = nullptr;
    QRect side; ///< left of a peer's bubble: the avatar's place, whether it is there or not
    QLabel *avatar = nullptr;
    QWidget *bubble = nullptr;
    QLabel *name = nullptr;
    QLabel *text = nullptr;
    QLabel *time = nullptr;
    bool isMine = false;
};
ShownMessage shownMessage(const QListWidget *list, int index);

/// One line for each entry of the chat: "== Today" for a day, "[BO] bob: text @12:00" for a peer's message
/// ("[]" without an avatar), "(me) text @12:00" for an own one; without "@" where no time is shown.
QStringList shownHistory(const QListWidget *list);

/// Clicks on the middle of an entry, or on what stands there, once it can be seen.
void clickRow(QListWidget *list, int index);

/// A message that is not encrypted, as the service lists it.
QJsonObject plainMessage(const QString &from, const QString &text, const QString &createdAt = {});

} // namespace tideloft::tests
