// Driving the window as a person would.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"

#include "tests/support/patience.h"
#include "tests/support/waiting.h"
#include "ui/chat/history_list.h"

#include <QApplication>
#include <QJsonDocument>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

QByteArray json(const QJsonArray &array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QByteArray objectJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
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
    waitForMainPage(window);
}

bool ChatWindow::signIn(const QString &username)
{
    service.answer("GET /api/me", 200, objectJson({{u"username"_s, username}}));
    const auto fields = window.findChildren<QLineEdit *>(u"authInput"_s);
    QTest::keyClicks(fields.value(0), username);
    QTest::keyClicks(fields.value(1), u"secret"_s);
    QTest::mouseClick(child<QPushButton>("primaryButton"), Qt::LeftButton);
    // The first sign-in makes a key pair, which takes its time under valgrind.
    if (!waitFor([this] { return service.count(requests::listConversations) > 0; }, 60'000) || !settle())
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
    return refreshAndWait(requests::listConversations);
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

QStringList ChatWindow::peers() const
{
    QStringList names;
    for (int i = 0; i < dmList()->count(); ++i)
        names.append(dmList()->item(i)->data(Qt::UserRole).toString());
    return names;
}

// Hundreds of messages take their time under a tool.
bool ChatWindow::refreshAndWait(const QByteArray &request)
{
    const qsizetype before = service.count(request);
    refresh();
    const auto *history = messageList()->findChild<ui::HistoryList *>();
    return service.waitForRequests(request, before + 1) && settle()
           && waitFor([history] { return history->isSettled(); }, 12 * patience());
}

} // namespace tideloft::tests
