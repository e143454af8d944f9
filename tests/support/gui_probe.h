// What tests of the window share: a window beside a service, and eyes and hands to use it like a person.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/loopback_service.h"
#include "ui/main_window.h"

#include <QStackedWidget>
#include <QVariant>

class QBoxLayout;

namespace tideloft::tests
{

/// From here to its end a test fails at a warning about painting, objects, layouts or style sheets.
void failOnToolkitWarnings();

/// Puts a key pair where the window looks for its own, the same one whenever a program asks.
void placeKeyPair();
/// Removes both key files, or what stands in their places.
void removeKeyPair();

/// The only widget of that type and name below ROOT; the test program ends where there is none or another.
template <typename Widget> Widget *only(const QWidget &root, const QString &name)
{
    const QList<Widget *> found = root.findChildren<Widget *>(name);
    if (found.size() != 1)
        qFatal("%lld widgets are called %s", qlonglong(found.size()), qPrintable(name));
    return found.first();
}

/// The widget that a table calls WHAT: an object name, "name=text" for the one of that name with that text,
/// or "username" and "password" for the fields of the sign-in page. None: the test program ends.
QWidget *named(const QWidget &root, const QString &what);

/// A property of WIDGET, enumerations and the cursor as numbers. "fixedWidth" and "fixedHeight" are the size
/// on which minimum and maximum agree, invalid where they do not.
QVariant propertyOf(const QWidget &widget, const QByteArray &property);

/// The items of LAYOUT in order: "#name" or a class, buttons with their text, a spacing's pixels, "stretch",
/// "[...]" for a layout inside; "*n" behind an item with stretch factor n.
QString itemsOf(const QBoxLayout *layout);
QString itemsOf(const QWidget *owner); ///< of its layout
/// "left top right bottom, spacing n" of the layout of OWNER.
QString spacesOf(const QWidget *owner);

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
