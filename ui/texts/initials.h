// The letters that stand for a person or a server where there is no picture.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui
{

/// The first COUNT characters of NAME, or the whole name if it is shorter, in upper case. Characters are code
/// points: an emoji that UTF-16 writes as a surrogate pair is never cut in two.
QString initials(const QString &name, int count = 2);

} // namespace tideloft::ui
