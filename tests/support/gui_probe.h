// What tests of the window share: a window beside a service, and eyes and hands to use it like a person.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/loopback_service.h"
#include "tests/support/widget_parts.h"
#include "ui/main_window.h"

#include <QLineEdit>
#include <QStackedWidget>

namespace tideloft::tests
{

/// Puts a key pair where the window looks for its own, the same one whenever a program asks.
void placeKeyPair();
/// Removes both key files, or what stands in their places.
void removeKeyPair();

/// Calls the private slot SLOT of WINDOW as the toolkit's meta-object knows it.
template <typename... Arguments>
bool callSlot(ui::MainWindow &window, const char *slot, Arguments... arguments)
{
    return QMetaObject::invokeMethod(&window, slot, Qt::DirectConnection, arguments...);
}

/// The window on screen, and a service at which every account may sign in and be "alice" without a history.
class GuiProbe
{
public:
    GuiProbe();
    ~GuiProbe();

    template <typename Widget> Widget *the(const QString &name) const { return only<Widget>(*window, name); }
    QLineEdit *username() const;
    QLineEdit *password() const;
    QWidget *page() const { return root()->currentWidget(); } ///< sign-in page or main page
    QStackedWidget *root() const;
    QStackedWidget *center() const;
    QString centerPage() const; ///< "emptyState" or "chatPage"
    bool onMainPage() const { return root()->currentIndex() == 1; }
    QString errorText() const; ///< of the sign-in page; "(hidden)" where it shows none
    QTimer *refreshTimer() const;

    void click(const QString &name) const; ///< a left click into the middle
    void fillIn(const QString &name, const QString &secret) const;
    /// Types both fields, clicks, and waits for the main page and its first requests.
    bool signIn(const QString &name = QStringLiteral("alice"));
    /// Waits until the conversation list has PEERS in that order, and nothing else.
    bool waitForPeers(const QStringList &peers) const;
    /// Gives the service conversations with PEERS, refreshes, and waits until they are listed.
    bool listPeers(const QStringList &peers);
    /// A click on the entry of PEER, which must be listed.
    void clickPeer(const QString &peer) const;
    bool open(const QString &peer); ///< lists PEER, clicks it, and waits for its history to be asked for
    /// Returns once a later request was answered, and with it whatever came in before. The conversation list
    /// shows one entry of its own then.
    bool settle();

    LoopbackService service;
    std::unique_ptr<ui::MainWindow> window;

private:
    int settled = 0;
};

} // namespace tideloft::tests
