// The line in which messages are written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui
{

/// What stays in the line that reads LINE once SENT, the trimmed text of a message, has arrived: what was
/// typed behind it meanwhile. Empty when the line does not begin with SENT, or when only white space follows.
QString restOfLine(const QString &line, const QString &sent);

} // namespace tideloft::ui
