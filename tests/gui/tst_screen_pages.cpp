// Going to each page as a person does, and filling it with what a service sends.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_screen_pages.h"

#include "app/language_select_dialog.h"
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/waiting.h"

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

const QString longName = u"W"_s.repeated(200);

QString nameFor(Names names, const QString &usual)
{
    return names == Names::Long ? usual + longName : usual;
}

void signInWithLongName(SettingsProbe &probe)
{
    const QJsonObject me{{u"username"_s, longName}};
    callSlot(*probe.window, "onMeLoaded", Q_ARG(QJsonObject, me));
    probe.settle(); // or the list that it asks for would replace the one that comes next
}

QJsonObject message(const QString &from, const QString &text, const QString &time)
{
    return {{u"from"_s, from}, {u"text"_s, text}, {u"createdAt"_s, time}};
}

/// Entries of every length, more than the list is high, with both forms of a time.
void listConversations(const SettingsProbe &probe, Names names)
{
    QJsonArray items;
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    for (int i = 0; i < 12; ++i) {
        items.append(
            QJsonObject{{u"peer"_s, nameFor(names, u"friend%1"_s.arg(i))},
                        {u"text"_s, i % 2 ? u"See you at noon 🌊"_s : u"words and words "_s.repeated(20)},
                        {u"createdAt"_s, i % 2 ? now : u"2021-09-30T23:59:00.000Z"_s}});
    }
    callSlot(*probe.window, "onConversationsLoaded", Q_ARG(QJsonArray, items));
}

bool showMain(SettingsProbe &probe, Names names, const Look &look)
{
    if (names == Names::Long)
        signInWithLongName(probe);
    probe.refreshTimer()->stop();
    probe.settle();
    listConversations(probe, names);
    look(*probe.window);
    return true;
}

bool showSignIn(SettingsProbe &probe, Names names, const Look &look)
{
    probe.window->logOut();
    if (names == Names::Long)
        probe.username()->setText(longName);
    look(*probe.window);
    return true;
}

bool showRefusal(SettingsProbe &probe, Names names, const Look &look)
{
    probe.window->logOut();
    callSlot(*probe.window, "onLoginFailed", Q_ARG(QString, nameFor(names, u"Wrong name or password."_s)));
    look(*probe.window);
    return true;
}

bool showBusy(SettingsProbe &probe, Names, const Look &look)
{
    probe.window->logOut();
    probe.service.hold("POST /api/auth/register");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    look(*probe.window);
    return true;
}

bool showSearch(SettingsProbe &probe, Names names, const Look &look)
{
    QJsonArray users;
    for (int i = 0; i < 9; ++i)
        users.append(QJsonObject{{u"username"_s, nameFor(names, u"friend%1"_s.arg(i))}});
    callSlot(*probe.window, "onSearchLoaded", Q_ARG(QJsonArray, users));
    look(*probe.window);
    return true;
}

bool showConversation(SettingsProbe &probe, Names names, const Look &look)
{
    const QString bob = nameFor(names, u"bob"_s);
    probe.refreshTimer()->stop();
    const QJsonArray peers{QJsonObject{{u"peer"_s, bob}}};
    callSlot(*probe.window, "onConversationsLoaded", Q_ARG(QJsonArray, peers));
    probe.clickPeer(bob);
    const QString words = u"The quick brown fox jumps over the lazy dog. "_s;
    const QJsonArray items{message(bob, u"Hej! Ses vi kl. 12? 🌊"_s, u"2021-03-07T12:00:00.000Z"_s),
                           message(bob, words.repeated(9), u"2021-03-07T12:01:00.000Z"_s),
                           message(u"alice"_s, u"Ja, gärna ☀"_s, u"2021-03-07T12:02:00.000Z"_s),
                           message(u"alice"_s, words.repeated(4), u"2021-09-30T12:03:00.000Z"_s)};
    callSlot(*probe.window, "onHistoryLoaded", Q_ARG(QString, bob), Q_ARG(QJsonArray, items));
    probe.listPeers({bob, u"carol"_s});
    look(*probe.window);
    return true;
}

bool showServer(SettingsProbe &probe, Names names, const Look &look)
{
    QJsonArray servers;
    for (int i = 0; i < 15; ++i)
        servers.append(server(u"g%1"_s.arg(i), nameFor(names, i % 2 ? u"Pier & Harbour"_s : u"🌍 World"_s)));
    if (!listServers(probe, servers))
        return false;
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    look(*probe.window);
    return true;
}

ScreenPage sectionPage(const char *name, int section)
{
    return {name, [section](SettingsProbe &probe, Names names, const Look &look) {
                if (names == Names::Long)
                    signInWithLongName(probe);
                probe.refreshTimer()->stop();
                probe.openSettings();
                probe.clickRow(section);
                if (!probe.fadedIn())
                    return false;
                look(*probe.window);
                return true;
            }};
}

bool showLanguages(SettingsProbe &, Names, const Look &look)
{
    app::LanguageSelectDialog dialog;
    dialog.show();
    look(dialog);
    return true;
}

bool showCreateServer(SettingsProbe &probe, Names names, const Look &look)
{
    return withCreateDialog(probe, [&](QDialog &dialog) {
        if (names == Names::Long)
            fillIn(dialog, longName, longName);
        look(dialog);
    });
}

bool showPrivacy(SettingsProbe &probe, Names, const Look &look)
{
    return withDialog([&probe] { probe.click(u"quilloryBtn"_s); }, look);
}

bool showMessageBox(SettingsProbe &probe, Names names, const Look &look)
{
    callSlot(*probe.window, "onMessageSendFailed", Q_ARG(QString, nameFor(names, u"Not found"_s)));
    const auto box = [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); };
    if (!waitFor([&] { return box() != nullptr; }))
        return false;
    look(*box());
    box()->accept();
    return true;
}

bool showUserMenu(SettingsProbe &probe, Names, const Look &look)
{
    return withUserMenu(probe, [&look](QMenu *menu) { look(*menu); });
}

bool showServerMenu(SettingsProbe &probe, Names names, const Look &look)
{
    return listServers(probe, {server(u"g1"_s, nameFor(names, u"Pier"_s))})
           && withServerMenu(probe, [&look](QMenu *menu) { look(*menu); });
}

} // namespace

const QList<ScreenPage> &screenPages()
{
    static const QList<ScreenPage> pages{
        {"language", showLanguages},
        {"sign-in", showSignIn},
        {"refused", showRefusal},
        {"busy", showBusy},
        {"main", showMain},
        {"search", showSearch},
        {"conversation", showConversation},
        {"server", showServer},
        {"server-menu", showServerMenu},
        {"create-server", showCreateServer},
        {"user-menu", showUserMenu},
        sectionPage("account", Account),
        sectionPage("privacy", Privacy),
        sectionPage("security", Security),
        sectionPage("notifications", Notifications),
        sectionPage("chat", Chat),
        sectionPage("appearance", Appearance),
        sectionPage("advanced", Advanced),
        sectionPage("about", About),
        {"privacy-dialog", showPrivacy},
        {"message-box", showMessageBox},
    };
    return pages;
}

} // namespace tideloft::tests
