// Keeping the keyboard for a widget that is disabled for a while.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace tideloft::ui
{

/// The toolkit passes the keyboard of a widget that is disabled on to the next one, where a key that is
/// pressed now does what nobody meant. Here the keyboard waits in a place that does nothing with keys.
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
