// Taking the rows of the two lists apart.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_rows.h"

#include "tests/support/waiting.h"

#include <QBoxLayout>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QString lineOf(const ShownMessage &message)
{
    QString line = u"(me) "_s;
    if (!message.isMine)
        line = u"[%1] "_s.arg(message.avatar ? message.avatar->text() : QString());
    if (message.name)
        line += message.name->text() + u": "_s;
    line += message.text ? message.text->text() : u"no text"_s;
    return message.time ? line + u" @"_s + message.time->text() : line;
}

void readBubble(ShownMessage &message)
{
    const QLayout *column = message.bubble->layout();
    for (int i = 0; i < column->count(); ++i) {
        auto *label = qobject_cast<QLabel *>(column->itemAt(i)->widget());
        if (label->wordWrap())
            message.text = label;
        else
            (message.text ? message.time : message.name) = label;
    }
}

} // namespace

ShownConversation shownConversation(const QListWidget *list, int index)
{
    ShownConversation shown;
    shown.row = list->itemWidget(list->item(index));
    const QLayout *line = shown.row->layout();
    shown.avatarPlace = line->itemAt(0)->widget();
    shown.textBlock = line->itemAt(1)->layout();
    shown.timeBlock = line->itemAt(2)->layout();
    shown.name = qobject_cast<QLabel *>(shown.textBlock->itemAt(0)->widget());
    shown.preview = qobject_cast<QLabel *>(shown.textBlock->itemAt(1)->widget());
    shown.time = qobject_cast<QLabel *>(shown.timeBlock->itemAt(0)->widget());
    return shown;
}

ShownMessage shownMessage(const QListWidget *list, int index)
{
    ShownMessage message;
    message.row = list->itemWidget(list->item(index));
    const QLayout *line = message.row->layout();
    message.isMine = line->count() == 2; // nothing stands right of its bubble
    message.bubble = line->itemAt(1)->widget();
    if (!message.isMine) {
        message.side = line->itemAt(0)->geometry();
        message.avatar = qobject_cast<QLabel *>(line->itemAt(0)->widget());
    }
    readBubble(message);
    return message;
}

QStringList shownHistory(const QListWidget *list)
{
    QStringList lines;
    for (int i = 0; i < list->count(); ++i) {
        const QWidget *row = list->itemWidget(list->item(i));
        const auto *day = qobject_cast<QLabel *>(row->layout()->itemAt(1)->widget());
        lines.append(day ? u"== "_s + day->text() : lineOf(shownMessage(list, i)));
    }
    return lines;
}

void clickRow(QListWidget *list, int index)
{
    const auto centre = [&] { return list->visualItemRect(list->item(index)).center(); };
    // A list that has just appeared still has to be given its height.
    const auto canBeSeen = [&] {
        return list->item(index) && list->isVisible() && list->viewport()->rect().contains(centre());
    };
    if (!waitFor(canBeSeen))
        qFatal("Entry %d cannot be seen", index);
    QWidget *target = list->viewport()->childAt(centre());
    if (!target)
        target = list->viewport();
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(list->viewport(), centre()));
}

QJsonObject plainMessage(const QString &from, const QString &text, const QString &createdAt)
{
    QJsonObject item{{u"from"_s, from}, {u"text"_s, text}};
    if (!createdAt.isEmpty())
        item.insert(u"createdAt"_s, createdAt);
    return item;
}

} // namespace tideloft::tests
