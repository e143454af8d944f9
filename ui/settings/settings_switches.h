// The switches of the settings sections. None of them changes what the program does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QList>

namespace tideloft::ui
{

/// One switch: what it is called, what it would do, and how it starts.
struct SwitchModel {
    LocalizedText label;
    LocalizedText hint;
    bool on = false;
};

/// Switches under one header.
struct SwitchGroup {
    LocalizedText header;
    QList<SwitchModel> switches;
};

QList<SwitchGroup> privacySwitches();
QList<SwitchGroup> notificationSwitches();
QList<SwitchGroup> chatSwitches();
QList<SwitchGroup> securitySwitches();
QList<SwitchGroup> advancedSwitches();
QList<SwitchGroup> appearanceSwitches();

} // namespace tideloft::ui
