// The line in which messages are written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QLineEdit;

namespace tideloft::ui
{

/// What stays in the line that reads LINE once SENT, the trimmed text of a message, has arrived: what was
/// typed behind it meanwhile. Empty when the line does not begin with SENT, or when only white space follows.
QString restOfLine(const QString &line, const QString &sent);

/// Takes SENT out of LINE by that rule. Undo brings it back, and the cursor stays where it is in the rest.
void clearSentText(QLineEdit *line, const QString &sent);

} // namespace tideloft::ui
