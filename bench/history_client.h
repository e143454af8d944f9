// A long conversation of sealed messages as the service sends it, and a client that has it open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/list_window.h"
#include "net/reply_cache.h"
#include "ui/messages/message_reader.h"

#include <QByteArray>
#include <QLineEdit>

namespace tideloft::bench
{

/// A reply with COUNT messages, each from one to three lines long. A longer one begins with a shorter one.
QByteArray sealedHistory(int count);

/// From a reply's bytes to a painted list, in a window that has a line to type in beside it.
class HistoryClient
{
public:
    HistoryClient();

    /// Parses BODY and reads its messages.
    QList<ui::HistoryRow> read(const QByteArray &body);
    /// Returns when the newest messages are painted; the others wait for their slices.
    void show(const QByteArray &body);
    /// Lets the event loop turn until all is opened, measured and painted.
    void finish() const;
    void typeLetter();

    [[nodiscard]] QListWidget *list() const { return window.list; }
    [[nodiscard]] ui::HistoryList *history() const { return window.history; }

private:
    ListWindow window{QStringLiteral("messageList")};
    QLineEdit line;
    net::ReplyCache reply;
    ui::MessageReader reader;
};

} // namespace tideloft::bench
