// A list as the chat page has it, and histories to show in it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/chat/message_row.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QListWidget>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTimeZone>

#include <utility>

namespace tideloft::tests
{

class HistoryWindow
{
public:
    /// A window of its own unless there is a PARENT.
    explicit HistoryWindow(QWidget *parent = nullptr) : list(parent)
    {
        list.setObjectName(QStringLiteral("messageList"));
        list.setStyleSheet(ui::darkStyleSheet());
        list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list.setWordWrap(true);
        list.setSelectionMode(QAbstractItemView::NoSelection);
        list.setFocusPolicy(Qt::NoFocus);
        list.resize(600, 420);
        list.show();
        QApplication::processEvents();
    }

    QScrollBar *bar() const { return list.verticalScrollBar(); }
    ui::MessageRow *row(int index) const
    {
        return qobject_cast<ui::MessageRow *>(list.itemWidget(list.item(index)));
    }
    QImage picture() { return list.viewport()->grab().toImage(); }
    /// The entry at the top, and how far it is cut off there.
    std::pair<int, int> place() const
    {
        int index = 0;
        while (index < list.count() - 1 && list.visualItemRect(list.item(index)).bottom() < 0)
            ++index;
        return {index, list.visualItemRect(list.item(index)).top()};
    }

    QListWidget list;
};

/// Makes up encrypted messages; the same again for the same SEED.
class RandomHistory
{
public:
    explicit RandomHistory(quint32 seed) : random(seed) {}

    /// COUNT messages and their days. Their texts begin with the message's number.
    QList<ui::HistoryRow> rows(int count)
    {
        using namespace Qt::StringLiterals;
        const auto open = [this](const QJsonObject &item) {
            ++opened;
            return ui::OpenedText(item.value(u"text"_s).toString());
        };
        const QStringList some{u"hi"_s, u"line\nbreak"_s, u"🙂🔒"_s, QString(90, u'x'),
                               u"some words that go on for longer than a bubble is wide, "_s.repeated(3)};
        QJsonArray items;
        QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(8, 0), QTimeZone::utc()).toUTC();
        for (int i = 0; i < count; ++i) {
            time = time.addSecs(random.bounded(4'000));
            items.append(QJsonObject{
                {u"from"_s, random.bounded(2) ? u"alice"_s : u"bob"_s},
                {u"encrypted"_s, true},
                {u"text"_s, QString::number(i) + u' ' + some.at(random.bounded(int(some.size())))},
                {u"createdAt"_s, time.toString(Qt::ISODate)}});
        }
        const ui::Reading reading{u"alice"_s, open, time, ui::Language::English};
        return historyRows(displayRecords(items, reading), QDate(2024, 6, 1), ui::Language::English);
    }

    int opened = 0; ///< how many texts somebody has looked at

private:
    QRandomGenerator random;
};

} // namespace tideloft::tests
