// Looking at the window and using it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/waiting.h"

#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "tests/support/patience.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QByteArray conversationsWith(const QStringList &peers)
{
    QJsonArray items;
    for (const QString &peer : peers)
        items.append(QJsonObject{{u"peer"_s, peer}, {u"text"_s, u"Hello"_s}});
    return QJsonDocument(items).toJson();
}

QListWidgetItem *entryOf(const QListWidget *list, const QString &peer)
{
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() == peer)
            return list->item(i);
    }
    return nullptr;
}

} // namespace

void placeKeyPair()
{
    static QString privateKey;
    static QString publicKey;
    removeKeyPair();
    if (privateKey.isEmpty()) {
        if (!crypto::ensureKeyPair())
            qFatal("No key pair could be made");
        privateKey = crypto::readPrivateKeyFile();
        publicKey = crypto::readPublicKeyFile();
    } else if (!crypto::writePrivateKeyFile(privateKey) || !crypto::writePublicKeyFile(publicKey)) {
        qFatal("The key pair could not be written");
    }
}

void removeKeyPair()
{
    for (const QString &path : {crypto::privateKeyPath(), crypto::publicKeyPath()}) {
        if (QFileInfo(path).isDir())
            QDir(path).removeRecursively();
        QFile::remove(path);
    }
}

GuiProbe::GuiProbe()
{
    QApplication::setCursorFlashTime(0); // two pictures differ only if the window does
    for (const char *key : {"POST /api/auth/login", "POST /api/auth/register", "POST /api/chat/device-key"})
        service.answer(key, 200, "{}");
    service.answer("GET /api/me", 200, R"({"username":"alice"})");
    service.answer("GET /api/chat/device-keys/me", 200, R"({"keys":[]})");
    service.answer(requests::listConversations, 200, "[]");
    service.answer("GET /api/groups", 200, "[]");
    window = std::make_unique<ui::MainWindow>();
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window.get(), patience()))
        qFatal("The window does not come up");
    waitForMainPage(*window);
}

GuiProbe::~GuiProbe() = default;

QLineEdit *GuiProbe::username() const
{
    return static_cast<QLineEdit *>(named(*window, u"username"_s));
}

QLineEdit *GuiProbe::password() const
{
    return static_cast<QLineEdit *>(named(*window, u"password"_s));
}

QStackedWidget *GuiProbe::root() const
{
    return window->centralWidget()->findChild<QStackedWidget *>({}, Qt::FindDirectChildrenOnly);
}

QStackedWidget *GuiProbe::center() const
{
    return the<QWidget>(u"centerPanel"_s)->findChild<QStackedWidget *>({}, Qt::FindDirectChildrenOnly);
}

QString GuiProbe::centerPage() const
{
    const QWidget *shown = center()->currentWidget();
    return shown->findChild<QWidget *>(u"chatHeader"_s) ? u"chatPage"_s : shown->objectName();
}

QString GuiProbe::errorText() const
{
    const auto *label = the<QLabel>(u"authError"_s);
    return label->isHidden() ? u"(hidden)"_s + label->text() : label->text();
}

QTimer *GuiProbe::refreshTimer() const
{
    const auto timers = window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    if (timers.size() != 1)
        qFatal("The window owns %lld timers", qlonglong(timers.size()));
    return timers.first();
}

void GuiProbe::click(const QString &name) const
{
    QTest::mouseClick(named(*window, name), Qt::LeftButton);
}

void GuiProbe::fillIn(const QString &name, const QString &secret) const
{
    QTest::keyClicks(username(), name);
    QTest::keyClicks(password(), secret);
}

bool GuiProbe::signIn(const QString &name)
{
    // Requests go out over several connections: none of them tells that the others have come.
    const QList<QByteArray> asked{"GET /api/chat/device-keys/me", requests::listConversations,
                                  "GET /api/groups"};
    QList<qsizetype> before;
    for (const QByteArray &request : asked)
        before.append(service.count(request));
    fillIn(name, u"correct horse"_s);
    click(u"primaryButton"_s);
    bool ok = waitFor([this] { return onMainPage(); }, patience());
    for (qsizetype i = 0; i < asked.size(); ++i)
        ok = ok && service.waitForRequests(asked.at(i), before.at(i) + 1);
    return ok;
}

bool GuiProbe::waitForPeers(const QStringList &peers) const
{
    const auto *list = the<QListWidget>(u"dmList"_s);
    const auto arrived = [&] {
        QStringList listed;
        for (int i = 0; i < list->count(); ++i)
            listed.append(list->item(i)->data(Qt::UserRole).toString());
        return listed == peers;
    };
    return waitFor(arrived, patience());
}

bool GuiProbe::listPeers(const QStringList &peers)
{
    service.answer(requests::listConversations, 200, conversationsWith(peers));
    return callSlot(*window, "refreshData") && waitForPeers(peers);
}

void GuiProbe::clickPeer(const QString &peer) const
{
    const auto *list = the<QListWidget>(u"dmList"_s);
    const QListWidgetItem *entry = entryOf(list, peer);
    if (!entry)
        qFatal("%s is not listed", qPrintable(peer));
    // What lies on the entry gets the click first, as on a screen.
    const QPoint spot = list->visualItemRect(entry).center();
    QWidget *top = list->viewport()->childAt(spot);
    QWidget *target = top ? top : list->viewport();
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(list->viewport(), spot));
}

bool GuiProbe::open(const QString &peer)
{
    const QByteArray history = "GET /api/chat/history/" + peer.toUtf8();
    service.answer(history, 200, "[]");
    const qsizetype before = service.count(history);
    if (!listPeers({peer}))
        return false;
    clickPeer(peer);
    return service.waitForRequests(history, before + 1);
}

bool GuiProbe::settle()
{
    return listPeers({u"settled-%1"_s.arg(++settled)});
}

} // namespace tideloft::tests
