// What tests share that open a box, a menu, a dialog or a popup and let something happen meanwhile.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_settings_probe.h"

#include <functional>

class QLineEdit;

namespace tideloft::tests
{

/// Something that stands in front of the window, and how a person opens it.
struct InFront {
    const char *name;
    std::function<void(SettingsProbe &)> open;
};
QList<InFront> everythingInFront();

/// The window with one server in the rail and the conversation with bob open, whose keys can be written to.
class ModalProbe : public SettingsProbe
{
public:
    ModalProbe();

    QLineEdit *input() const;
    void write(const QString &text) const; ///< into the empty input, and sends it
    /// Opens FRONT, lets MEANWHILE happen once it is there, closes it, and every box that came meanwhile.
    /// Their texts, in no order.
    QStringList during(const InFront &front, const std::function<void()> &meanwhile);
    /// Closes what is in front until nothing is, and says what the boxes said.
    static QStringList closeAll();
};

} // namespace tideloft::tests
