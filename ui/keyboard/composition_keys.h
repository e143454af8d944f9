// Keys that belong to an input method while it composes a text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QLineEdit;

namespace tideloft::ui
{

/// Keeps Return and Enter from doing anything else in FIELD while an input method composes a text there: then
/// they end the composition. Most input methods keep these keys to themselves; some pass them on as well, and
/// half a text would be sent. To be called after all other filters of the field are in place: the last one
/// comes first.
void keepCompositionKeys(QLineEdit *field);

} // namespace tideloft::ui
