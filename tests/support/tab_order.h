// The way of the Tab key through a page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;

namespace tideloft::tests
{

/// What the keyboard reaches inside PART when Tab is pressed again and again, beginning with FIRST: names for
/// assistive programs, or texts.
QStringList tabOrder(const QWidget *part, QWidget *first);

} // namespace tideloft::tests
