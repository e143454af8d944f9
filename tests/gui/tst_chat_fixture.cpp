// Driving the window as a person would, and reading its rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"

#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QApplication>
#include <QBoxLayout>
#include <QJsonDocument>
#include <QMessageBox>
#include <QRegularExpression>

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

const QByteArray conversations = QByteArrayLiteral("GET /api/chat/conversations");

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

void failOnToolkitWarnings()
{
    QTest::failOnWarning(QRegularExpression(u"QPainter|QObject|QWidget|QLayout|QCss|Could not parse"_s));
}

QByteArray json(const QJsonArray &array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QByteArray objectJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject plainMessage(const QString &from, const QString &text, const QString &createdAt)
{
    QJsonObject item{{u"from"_s, from}, {u"text"_s, text}};
    if (!createdAt.isEmpty())
        item.insert(u"createdAt"_s, createdAt);
    return item;
}

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

QMessageBox *waitForBox()
{
    const auto box = [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); };
    return waitFor([&] { return box() != nullptr; }, patience()) ? box() : nullptr;
}

ChatWindow::ChatWindow(int language)
{
    service.answer("POST /api/auth/login", 200, "{}");
    service.answer("POST /api/chat/device-key", 200, "{}");
    service.answer("GET /api/chat/device-keys/me", 200, "[]");
    service.answer("GET /api/chat/conversations", 200, "[]");
    service.answer("GET /api/groups", 200, "[]");
    window.setLanguageIndex(language);
    window.show();
}

bool ChatWindow::signIn(const QString &username)
{
    service.answer("GET /api/me", 200, objectJson({{u"username"_s, username}}));
    const auto fields = window.findChildren<QLineEdit *>(u"authInput"_s);
    QTest::keyClicks(fields.value(0), username);
    QTest::keyClicks(fields.value(1), u"secret"_s);
    QTest::mouseClick(child<QPushButton>("primaryButton"), Qt::LeftButton);
    // The first sign-in makes a key pair, which takes its time under valgrind.
    if (!waitFor([this] { return service.count(conversations) > 0; }, 60'000) || !settle())
        return false;
    ownDevice = QString::fromUtf8(service.lastRequest("GET /api/me").header("X-Device-Token"));
    for (QTimer *timer : window.findChildren<QTimer *>(Qt::FindDirectChildrenOnly)) {
        if (timer->interval() == 3000)
            timer->stop();
    }
    return dmList()->isVisible();
}

void ChatWindow::refresh()
{
    QMetaObject::invokeMethod(&window, "refreshData");
}

bool ChatWindow::showConversations(const QJsonArray &items)
{
    service.answer("GET /api/chat/conversations", 200, json(items));
    return refreshAndWait(conversations);
}

bool ChatWindow::open(const QString &peer, const QJsonArray &items)
{
    // The answer to what was sent before may still be under way, and it asks for a history.
    if (!settle() || !settle())
        return false;
    const QByteArray history = "GET /api/chat/history/" + peer.toUtf8();
    service.answer(history, 200, json(items));
    if (!showConversations({QJsonObject{{u"peer"_s, peer}}}))
        return false;
    const qsizetype before = service.count(history);
    click(dmList(), 0);
    return service.waitForRequests(history, before + 1) && settle() && msgInput()->isVisible();
}

bool ChatWindow::showHistory(const QString &peer, const QJsonArray &items)
{
    service.answer("GET /api/chat/history/" + peer.toUtf8(), 200, json(items));
    return refreshAndWait("GET /api/chat/history/" + peer.toUtf8());
}

bool ChatWindow::settle()
{
    // A search whose answer can be seen. Whatever the service wrote before reaches the client before it.
    const QString marker = u"settled-%1"_s.arg(++settled);
    service.answer("GET /api/users/search?q=" + marker.toUtf8(), 200,
                   json(QJsonArray{QJsonObject{{u"username"_s, marker}}}));
    sideSearch()->setText(marker);
    const bool seen = waitFor(
        [this, &marker] {
            const QListWidgetItem *entry = searchResults()->item(0);
            return entry && entry->data(Qt::UserRole).toString() == marker;
        },
        patience());
    sideSearch()->clear();
    return seen;
}

void ChatWindow::click(QListWidget *list, int index)
{
    const auto centre = [&] { return list->visualItemRect(list->item(index)).center(); };
    // A list that has just appeared still has to be given its height.
    const auto canBeSeen = [&] {
        return list->item(index) && list->isVisible() && list->viewport()->rect().contains(centre());
    };
    if (!waitFor(canBeSeen, patience()))
        qFatal("Entry %d cannot be seen", index);
    QWidget *target = list->viewport()->childAt(centre());
    if (!target)
        target = list->viewport();
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(list->viewport(), centre()));
}

QStringList ChatWindow::peers() const
{
    QStringList names;
    for (int i = 0; i < dmList()->count(); ++i)
        names.append(dmList()->item(i)->data(Qt::UserRole).toString());
    return names;
}

bool ChatWindow::refreshAndWait(const QByteArray &request)
{
    const qsizetype before = service.count(request);
    refresh();
    return service.waitForRequests(request, before + 1) && settle();
}

} // namespace tideloft::tests
