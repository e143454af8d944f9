// The messages of a history, opened and ready to be grouped.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>

#include <functional>
#include <utility>

namespace tideloft::ui
{

/// One message as the view shows it.
struct DisplayRecord {
    QString from;
    QString text;
    QDateTime time; ///< Local; invalid if the service's text cannot be read.
    bool isMine = false;
    QString reason = {}; ///< Why it could not be opened, in English; empty where it could.

    bool operator==(const DisplayRecord &) const = default;
};

/// What came of opening a message: its plain text, or an empty text and the reason.
struct OpenedText {
    OpenedText(QString plainText, QString failure = {})
        : text(std::move(plainText)),
          reason(std::move(failure))
    {
    }

    QString text;
    QString reason;
};

/// Opens an encrypted message for this device.
using OpenMessage = std::function<OpenedText(const QJsonObject &item)>;

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

DisplayRecord displayRecord(const QJsonObject &item, const Reading &reading);

/// One record for each object of ITEMS, in their order.
QList<DisplayRecord> displayRecords(const QJsonArray &items, const Reading &reading);

} // namespace tideloft::ui
