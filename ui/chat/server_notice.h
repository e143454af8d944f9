// What stands in the chat panel while a server is open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QString;
class QWidget;

namespace tideloft::ui
{

/// A row with TEXT in its middle.
QWidget *makeServerNotice(const QString &text, QWidget *parent);

} // namespace tideloft::ui
