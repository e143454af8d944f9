// The switches that the settings must have.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/settings_parts.h"
#include "ui/texts/text.h"

namespace tideloft::tests
{

/// A switch in its section: the header of its card, what it is called, its hint, and whether it starts on.
struct SwitchRow {
    Section section = Account;
    ui::LocalizedText header;
    ui::LocalizedText label;
    ui::LocalizedText hint;
    bool on = false;
};

const QList<SwitchRow> &switchRows();

} // namespace tideloft::tests
