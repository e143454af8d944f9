// Why a message could not be displayed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

namespace tideloft::ui
{

/// REASON, as the encryption words it, and a sentence in LANGUAGE on what to do. In one line, and bounded.
QString messageTrouble(const QString &reason, Language language);

} // namespace tideloft::ui
