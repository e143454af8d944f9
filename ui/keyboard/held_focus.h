// Keeping the keyboard for a widget that is disabled for a while.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace tideloft::ui
{

/// When a widget with the keyboard is disabled, the toolkit gives the keyboard to the next widget, and a key
/// that is pressed now does there what nobody meant. With this class the keyboard waits in a place that
/// ignores keys.
class HeldFocus
{
public:
    /// To be called before WIDGETS are disabled: the one that has the keyboard loses it to PLACE, which holds
    /// them.
    void take(const QList<QWidget *> &widgets, QWidget *place);
    /// Whether the keyboard still waits: nobody has moved it since.
    [[nodiscard]] bool isWaiting() const;
    /// Gives the keyboard back if it still waits. The widget must be enabled again.
    void giveBack();

private:
    QPointer<QWidget> owner;
    QPointer<QWidget> waitingPlace;
};

} // namespace tideloft::ui
