// Styles for a widget and all in it at once, from the outside in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace tideloft::ui
{

/// Gives WIDGET and every widget in it their styles now.
/// The toolkit keeps a widget's style sheet under its address as soon as a child has asked for its own style,
/// and forgets it with the widget only if the widget has got its style as well. So a widget that is deleted
/// with a style for its child alone would leave its colours to the next one at that address.
void polishTree(QWidget *widget);

} // namespace tideloft::ui
