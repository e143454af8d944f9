// Moving between the pages of the window, and the keys and clicks that it catches.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/style/fade_in.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QProcess>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::showMessages()
{
    railMessagesBtn->setChecked(true);
    railSettingsBtn->setChecked(false);
    centerStack->setCurrentWidget(emptyState);
    backToChat();
}

void MainWindow::backToChat()
{
    railMessagesBtn->setChecked(true);
    railSettingsBtn->setChecked(false);
    if (!currentPeer.isEmpty()) {
        showConversation(currentPeer);
        return;
    }
    currentPeer.clear();
    centerStack->setCurrentWidget(emptyState);
}

void MainWindow::showChatHeader(const QString &title, const QString &subtitle, const QString &avatar)
{
    centerTitle->setText(title);
    centerSubtitle->setText(subtitle);
    peerAvatar->setText(avatar);
    peerAvatar->setAccessibleName(inOneLine(title));
}

void MainWindow::showConversation(const QString &peer)
{
    if (peer != currentPeer)
        sealing.cancel();
    currentPeer = peer;
    showChatHeader(peer, u"🔒 "_s + text(u"End-to-end krypterad"_s, u"End-to-end encrypted"_s),
                   initials(peer));
    leaveServer();
    centerStack->setCurrentWidget(chatPage);
    fadeIn(chatPage);
    msgInput->setFocus();
    QTimer::singleShot(0, this, [this] {
        msgInput->parentWidget()->layout()->activate();
        msgInput->parentWidget()->updateGeometry();
    });
}

void MainWindow::openConversation(const QString &peer)
{
    const QString trimmed = peer.trimmed();
    if (trimmed.isEmpty())
        return;
    showConversation(trimmed);
    api.fetchHistory(currentPeer);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    sealing.cancel();
    QMainWindow::closeEvent(event);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == msgInput && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return && !key->modifiers().testFlag(Qt::ShiftModifier)) {
            onSendClicked();
            return true;
        }
    } else if (watched->objectName() == u"sideFooter"_s && event->type() == QEvent::MouseButtonPress) {
        const QPoint position = static_cast<QMouseEvent *>(event)->position().toPoint();
        if (footerAvatar && footerAvatar->geometry().contains(position))
            chooseAvatar();
        else
            showUserMenu(static_cast<QWidget *>(watched));
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

// What belongs to a page works while that page is shown.
void MainWindow::connectKeys()
{
    const auto keys = [](QKeyCombination combination, QWidget *place) {
        return new QShortcut(QKeySequence(combination), place);
    };
    connect(keys(Qt::CTRL | Qt::Key_Q, this), &QShortcut::activated, QCoreApplication::instance(),
            &QCoreApplication::quit);
    connect(keys(Qt::CTRL | Qt::Key_W, this), &QShortcut::activated, this, &QWidget::close);
    connect(keys(Qt::CTRL | Qt::Key_F, mainPage), &QShortcut::activated, this, [this] {
        sideSearch->setFocus();
        sideSearch->selectAll();
    });
    for (QWidget *place : std::initializer_list<QWidget *>{sideSearch, searchResults}) {
        auto *escape = keys(Qt::Key_Escape, place);
        escape->setContext(Qt::WidgetShortcut);
        connect(escape, &QShortcut::activated, this, &MainWindow::leaveSearch);
    }
}

// A key that is held down repeats itself before the program has quit, and would start a copy each time.
void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_R || event->modifiers() != Qt::ControlModifier || event->isAutoRepeat()) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    QCoreApplication::quit();
    QProcess::startDetached(QCoreApplication::applicationFilePath(), QCoreApplication::arguments(), {});
}

} // namespace tideloft::ui
