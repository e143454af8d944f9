// Building a server's button.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/server_button.h"

#include "ui/style/rail_styles.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/plain_tool_tip.h"
#include "ui/widgets/widget_parts.h"

#include <QPushButton>
#include <QVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr char groupProperty[] = "groupId";

} // namespace

QPushButton *makeServerButton(const ServerModel &server, bool selected, QWidget *parent)
{
    // A single "&" would become a shortcut and vanish.
    auto *button = makeButton(initials(server.name, 1).replace(u'&', u"&&"_s), parent);
    button->setToolTip(server.name);
    showToolTipAsPlainText(button);
    button->setAccessibleName(inOneLine(server.name.isEmpty() ? server.groupId : server.name));
    button->setAccessibleDescription(u"Server"_s); // else the tool tip, whole
    button->setFixedSize(36, 36);
    roundFocusRing(button, 10);
    button->setCheckable(true);
    button->setChecked(selected);
    button->setStyleSheet(style::serverButton(selected));
    button->setContextMenuPolicy(Qt::CustomContextMenu);
    button->setProperty(groupProperty, server.groupId);
    return button;
}

QString serverWithFocus(const QWidget *column)
{
    const QWidget *focused = column->window()->focusWidget();
    return focused && column->isAncestorOf(focused) ? focused->property(groupProperty).toString() : QString();
}

QPushButton *serverButton(const QList<QPushButton *> &buttons, const QString &groupId)
{
    const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [&](const QPushButton *button) {
        return button->property(groupProperty).toString() == groupId;
    });
    return found == buttons.cend() ? nullptr : *found;
}

} // namespace tideloft::ui
