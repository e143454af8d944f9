// The messages of a history, ready to be grouped.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/lazy_text.h"
#include "ui/texts/message_time.h"
#include "ui/texts/text.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>

namespace tideloft::ui
{

/// One message as the view shows it.
struct DisplayRecord {
    QString from;
    LazyText text;
    QDateTime time; ///< Local; invalid if the service's text cannot be read.
    bool isMine = false;

    bool operator==(const DisplayRecord &) const = default;
};

/// How the items of one history are read: OWNNAME is the signed-in user's name; a message without a time gets
/// NOW; a message that cannot be opened says so in LANGUAGE.
struct Reading {
    QString ownName;
    OpenMessage open;
    QDateTime now;
    Language language = Language::English;
};

/// What is shown of an item: its plain text, the opened text of an envelope, or UNREADABLE if it cannot be
/// opened.
QString shownText(const QJsonObject &item, const OpenMessage &open, const QString &unreadable);

/// The text of ITEM: that of an envelope is left to OPENER, a plain one is open from the beginning and stays
/// readable whatever is closed.
LazyText messageText(const QJsonObject &item, const TextOpener &opener);

/// What opens the texts of records as READING says.
TextOpener textOpener(const Reading &reading);

/// Makes the records of one reply, read as READING says.
class RecordReader
{
public:
    explicit RecordReader(const Reading &how) : reading(how), opener(textOpener(how)) {}

    /// The record of ITEM. The text of an envelope is opened when somebody looks at it.
    DisplayRecord read(const QJsonObject &item);

private:
    const Reading &reading;
    TextOpener opener;
    LocalTimes times;
};

/// One record for each object of ITEMS, in their order. No envelope is opened.
QList<DisplayRecord> displayRecords(const QJsonArray &items, const Reading &reading);

} // namespace tideloft::ui
