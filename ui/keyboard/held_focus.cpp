// Taking the keyboard and giving it back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/held_focus.h"

namespace tideloft::ui
{

void HeldFocus::take(const QList<QWidget *> &widgets, QWidget *place)
{
    owner = nullptr;
    waitingPlace = nullptr;
    QWidget *focused = place->window()->focusWidget();
    if (!focused || !widgets.contains(focused))
        return;
    owner = focused;
    waitingPlace = place;
    place->setFocus();
}

bool HeldFocus::isWaiting() const
{
    return waitingPlace && waitingPlace->window()->focusWidget() == waitingPlace;
}

void HeldFocus::giveBack()
{
    if (owner && isWaiting())
        owner->setFocus();
    owner = nullptr;
    waitingPlace = nullptr;
}

} // namespace tideloft::ui
