// The keyboard's way to what otherwise only a click reaches.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QListWidget;
class QWidget;

namespace tideloft::ui
{

/// Return, Enter and Space on the current entry of LIST do what a click on it does.
void clickByKeys(QListWidget *list);

/// Return, Enter and Space on WIDGET, which Tab now reaches, run CLICK.
void clickByKeys(QWidget *widget, const std::function<void()> &click);

} // namespace tideloft::ui
