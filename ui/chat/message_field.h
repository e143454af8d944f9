// The field in which messages are written: the key that sends, and what stays when a message has arrived.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QKeyEvent;
class QLineEdit;

namespace tideloft::ui
{

/// Whether PRESS in the field sends what is written: Return does. With Shift, and on the keypad, the toolkit
/// does what it does in every field.
bool isSendKey(const QKeyEvent &press);

/// What stays of WRITTEN, the field's text, once SENT, the trimmed text of a message, has arrived: what was
/// typed behind it meanwhile. Empty when WRITTEN does not begin with SENT, or when only white space follows.
QString textBehindSent(const QString &written, const QString &sent);

/// Takes SENT out of FIELD by that rule. Undo brings it back, and the cursor stays where it is in the rest.
void clearSentText(QLineEdit *field, const QString &sent);

} // namespace tideloft::ui
