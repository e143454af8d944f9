// Watching a window that is fed with hostile texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_rail_probe.h"
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/hostile_texts.h"

#include <QTemporaryDir>

namespace tideloft::tests
{

/// What is wrong with what the program shows or does at the moment; empty if nothing is.
class HostileProbe : public SettingsProbe
{
public:
    explicit HostileProbe(ui::Language language);

    const QList<HostileText> &texts() const { return all; }
    /// Lets everything be laid out and drawn, and tells what is wrong: a label or a tip that takes text
    /// for markup, a button or a menu that takes it for a key, a text from outside in a title, a placeholder
    /// or a choice, a window or a list that has grown, a file that was opened, a host that was connected to.
    QString trouble();
    /// The text of the message box in front, which is closed; null if none comes.
    QString boxText() const;

private:
    QString touched() const;
    QString badText() const;

    QTemporaryDir directory;
    QList<HostileText> all;
    QSize windowSize;
};

/// The tip that WIDGET brings up, as the toolkit gets it.
QString tipOf(QWidget *widget);

} // namespace tideloft::tests
