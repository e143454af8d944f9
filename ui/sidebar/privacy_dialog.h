// The privacy dialog of the sidebar's footer.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QDialog>

namespace tideloft::ui
{

/// Four check boxes that are neither sent nor stored, and a button that closes.
class PrivacyDialog : public QDialog
{
    Q_OBJECT

public:
    PrivacyDialog(Language language, QWidget *parent);
};

} // namespace tideloft::ui
