// The program's message boxes.
#pragma once

#include <QString>

class QWidget;

namespace tideloft::ui
{

/// Shows TEXT in a modal warning titled "TideLoft" with an OK button, as it stands and never as markup.
/// Returns at once: replies that arrive meanwhile find the event loop where it always is.
void showWarning(QWidget *parent, const QString &text);

} // namespace tideloft::ui
