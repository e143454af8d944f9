// What can happen to a chat between two replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_changing_chat.h"

#include <QStringList>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace tideloft::tests
{

QString ChangingChat::name()
{
    return QStringList{u"bob"_s, u"Bob"_s, u"alice"_s, u"ALICE"_s, u"eve"_s}.at(below(5));
}

QString ChangingChat::words()
{
    const QStringList some{u"hi"_s,
                           u"ok"_s,
                           {},
                           u"line\nbreak"_s,
                           u"🙂🔒"_s,
                           QString(90, u'x'),
                           u"some words that go on for longer than a bubble is wide, "_s.repeated(3)};
    return some.at(below(int(some.size())));
}

QString ChangingChat::time()
{
    if (below(12) == 0)
        return u"soon"_s;
    return now.addSecs(-qint64(below(4)) * 3600 * 12 - below(40) * 60).toString(Qt::ISODate);
}

QJsonObject ChangingChat::item()
{
    const QString who = name();
    QJsonObject made{{u"from"_s, who}, {u"peer"_s, who + QString::number(below(3))}, {u"text"_s, words()}};
    if (below(8) > 0)
        made.insert(u"createdAt"_s, time());
    if (below(8) == 0)
        made.insert(u"encrypted"_s, true);
    return made;
}

void ChangingChat::changeItem()
{
    const int index = below(int(items.size()));
    QJsonObject changed = items.at(index).toObject();
    switch (below(3)) {
    case 0:
        changed.insert(u"text"_s, words());
        break;
    case 1:
        changed.insert(u"from"_s, name());
        break;
    default:
        changed.insert(u"createdAt"_s, time());
    }
    items.replace(index, changed);
}

void ChangingChat::moveItem()
{
    const QJsonValue moved = items.takeAt(below(int(items.size())));
    items.insert(below(int(items.size()) + 1), moved);
}

void ChangingChat::change()
{
    const int kind = below(12);
    if (items.isEmpty() || kind < 3)
        items.insert(kind == 0 ? int(items.size()) : below(int(items.size()) + 1), item());
    else if (kind < 5 || items.size() > 14)
        items.removeAt(below(int(items.size())));
    else if (kind < 7)
        changeItem();
    else if (kind == 7)
        moveItem();
    else if (kind == 8)
        language = language == Language::English ? Language::Swedish : Language::English;
    else if (kind == 9)
        now = now.addSecs(60 * below(20)); // over midnight, some day
    else if (kind == 10 && below(6) == 0)
        items = {};
}

QList<HistoryRow> ChangingChat::history() const
{
    const auto closed = [](const QJsonObject &) { return QString(); };
    return historyRows(displayRecords(items, {u"alice"_s, closed, now, language}), now.date(), language);
}

QList<ConversationRowModel> ChangingChat::conversations()
{
    const auto closed = [](const QJsonObject &) { return QString(); };
    return cache.rows(items, {u"alice"_s, closed, now, language}, 1);
}

} // namespace tideloft::tests
