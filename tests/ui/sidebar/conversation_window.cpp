// Making a window and replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/ui/sidebar/conversation_window.h"

#include "ui/style/style_sheets.h"
#include "ui/widgets/focus_ring.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace tideloft::tests
{

ConversationWindow::ConversationWindow()
{
    list.setObjectName(u"dmList"_s);
    list.setStyleSheet(darkStyleSheet());
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    ringFocus(&list);
    list.resize(260, 500);
    list.show();
    QApplication::processEvents();
}

QJsonObject Conversations::item()
{
    const QStringList some{u"hi"_s,       {},
                           u"🙂🔒"_s, u"line\nbreak"_s,
                           u"漢字"_s,     u"some words that go on for longer than the list is wide"_s,
                           u"نص عربي"_s,  QString(200, u'x')};
    QJsonObject made{{u"peer"_s, u"peer-%1"_s.arg(++named)},
                     {u"encrypted"_s, random.bounded(6) > 0},
                     {u"text"_s, some.at(random.bounded(int(some.size())))}};
    if (random.bounded(8) > 0)
        made.insert(u"createdAt"_s, now.addSecs(-random.bounded(400'000)).toUTC().toString(Qt::ISODate));
    return made;
}

void Conversations::fill(int count)
{
    for (int i = 0; i < count; ++i)
        items.append(item());
}

QList<ConversationRowModel> Conversations::rows()
{
    const auto open = [this](const QJsonObject &sealed) {
        ++opened;
        return sealed.value(u"text"_s).toString();
    };
    return cache.rows(items, {u"alice"_s, open, now, language}, 1);
}

void Conversations::change()
{
    const auto any = [this] { return random.bounded(int(items.size())); };
    switch (items.isEmpty() ? 0 : random.bounded(6)) {
    case 0:
        fill(random.bounded(4) == 0 ? 150 : 3);
        break;
    case 1:
        items.removeAt(any());
        break;
    case 2:
        items.prepend(items.takeAt(any()));
        break;
    case 3: {
        QJsonObject changed = items.takeAt(any()).toObject();
        changed.insert(u"text"_s, u"message %1"_s.arg(random.bounded(1'000)));
        items.prepend(changed);
        break;
    }
    case 4:
        items.insert(random.bounded(int(items.size()) + 1), items.at(any())); // the same one twice
        break;
    default:
        now = now.addSecs(60 * random.bounded(20)); // over midnight, some day
        language = random.bounded(2) ? Language::English : Language::Swedish;
    }
}

} // namespace tideloft::tests
