// The soft appearance of a page.
#pragma once

class QWidget;

namespace tideloft::ui
{

/// Lets WIDGET appear within 180 ms, from transparent to opaque. An effect it already has is replaced.
/// A fade that still runs on an ancestor or a descendant is brought to its end at once. When the fade is
/// over, its effect stays on the widget, opaque and disabled.
void fadeIn(QWidget *widget);

} // namespace tideloft::ui
