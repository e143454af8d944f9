// The sidebar with its footer alone, in a window that is dressed as the program's is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/page_window.h"
#include "tests/support/widget_parts.h"
#include "ui/sidebar/side_footer.h"
#include "ui/sidebar/sidebar.h"

#include <QTest>
#include <QWindow>

namespace tideloft::tests
{

/// "alice" is signed in. What the sidebar and its footer ask of the program is counted, and nothing comes of
/// it.
class SidebarPageProbe
{
public:
    explicit SidebarPageProbe(ui::Language language = ui::Language::English)
        : window(QSize(260, 720)),
          sidebar(new ui::Sidebar(language, &window)),
          footer(new ui::SideFooter(language, sidebar))
    {
        sidebar->addFooter(footer);
        sidebar->retranslate(language);
        footer->retranslate(language);
        footer->showUser(QStringLiteral("alice"));
        window.showPage(sidebar);
    }

    template <typename Widget> Widget *the(const QString &name) const { return only<Widget>(*sidebar, name); }
    /// Lists conversations with PEERS.
    void listPeers(const QStringList &peers) const
    {
        QList<ui::ConversationRowModel> rows;
        for (const QString &peer : peers)
            rows.append({.peer = peer, .preview = {}, .time = {}});
        sidebar->showConversations(rows);
    }
    /// A key for whatever has the keyboard.
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }
    /// How often something was asked of the program.
    qsizetype sentSignals() const
    {
        return window.sentSignals() + pictures.size() + profiles.size() + settings.size() + logOuts.size();
    }

    PageWindow window;
    ui::Sidebar *sidebar;
    ui::SideFooter *footer;
    QSignalSpy pictures{footer, &ui::SideFooter::pictureClicked};
    QSignalSpy profiles{footer, &ui::SideFooter::profileChosen};
    QSignalSpy settings{footer, &ui::SideFooter::settingsChosen};
    QSignalSpy logOuts{footer, &ui::SideFooter::logOutChosen};
};

} // namespace tideloft::tests
