// The empty state: its parts and its texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/empty_state.h"

#include "ui/chat/hint_row.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QWidget *makeEmptyIcon(QWidget *inner)
{
    auto *container = makeBox(inner, u"emptyIconContainer"_s);
    container->setFixedSize(80, 80);
    auto *icon = makeLabel(u"💬"_s, container, u"emptyIcon"_s);
    icon->setAlignment(Qt::AlignCenter);
    makeColumnLayout(container)->addWidget(icon);
    return container;
}

} // namespace

EmptyState::EmptyState(QWidget *parent) : QWidget(parent)
{
    setObjectName(u"emptyState"_s);
    setAttribute(Qt::WA_StyledBackground);
}

void EmptyState::build(Language language)
{
    auto *column = makeColumnLayout(this);
    auto *layout = new QHBoxLayout; // not an alignment: that would give the wrapped text no height of its own
    layout->addStretch();
    layout->addWidget(makeInner(language), 1);
    layout->addStretch();
    column->addStretch(2);
    column->addLayout(layout);
    column->addStretch(2);
    connect(emptyActionBtn, &QPushButton::clicked, this, &EmptyState::startClicked);
}

QWidget *EmptyState::makeInner(Language language)
{
    auto *inner = makeBox(this, u"emptyInner"_s);
    inner->setMaximumWidth(440);
    QWidget *hints = makeHints(language, inner);
    emptySubtitle = makeLabel({}, inner, u"emptySubtitle"_s);
    emptySubtitle->setAlignment(Qt::AlignCenter);
    emptySubtitle->setWordWrap(true);
    emptyActionBtn = makeButton({}, inner, u"emptyActionBtn"_s);
    emptyActionBtn->setFixedHeight(44);
    emptyActionBtn->setMinimumWidth(220);
    roundFocusRing(emptyActionBtn, 10);
    QWidget *icon = makeEmptyIcon(inner);
    emptyTitle = makeLabel({}, inner, u"emptyTitle"_s);
    emptyTitle->setAlignment(Qt::AlignCenter);

    auto *column = makeColumnLayout(inner);
    column->setContentsMargins(32, 32, 32, 32);
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addSpacing(20);
    column->addWidget(emptyTitle);
    column->addSpacing(8);
    column->addWidget(emptySubtitle);
    column->addSpacing(24);
    column->addWidget(hints);
    column->addSpacing(28);
    column->addWidget(emptyActionBtn, 0, Qt::AlignHCenter);
    return inner;
}

QWidget *EmptyState::makeHints(Language language, QWidget *inner)
{
    auto *hints = makeBox(inner, u"emptyHints"_s);
    auto *column = makeColumnLayout(hints, 8);
    const auto add = [&](const QString &icon, const QString &swedish, const QString &english) {
        column->addWidget(makeHintRow(icon, chooseText(language, swedish, english), hints));
    };
    add(u"🔒"_s, u"End-to-end krypterade meddelanden"_s, u"End-to-end encrypted messages"_s);
    add(u"⚡"_s, u"Snabb och säker kommunikation"_s, u"Fast and secure communication"_s);
    add(u"🌍"_s, u"Fungerar överallt"_s, u"Works everywhere"_s);
    return hints;
}

// A label that is not there any more is skipped.
void EmptyState::retranslate(Language language)
{
    emptyActionBtn->setText(
        chooseText(language, u"➕  Starta ny konversation"_s, u"➕  Start new conversation"_s));
    if (emptyTitle)
        emptyTitle->setText(chooseText(language, u"Välkommen till TideLoft"_s, u"Welcome to TideLoft"_s));
    if (emptySubtitle)
        emptySubtitle->setText(chooseText(language,
                                          u"Välj en konversation eller starta en ny för att chatta säkert."_s,
                                          u"Select a conversation or start a new one to chat securely."_s));
}

} // namespace tideloft::ui
