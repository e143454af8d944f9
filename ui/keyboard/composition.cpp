// Watching for a composition.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/composition.h"

#include <QInputMethodEvent>
#include <QLineEdit>

namespace tideloft::ui
{

Composition::Composition(QLineEdit *field) : QObject(field)
{
    field->installEventFilter(this);
    connect(field, &QLineEdit::textEdited, this, [this] { byUser = true; });
    connect(field, &QLineEdit::textChanged, this, &Composition::noticeChange);
}

bool Composition::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::InputMethod)
        composing = !static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty();
    else if (event->type() == QEvent::FocusOut)
        composing = false; // the input method commits or drops it, and need not tell
    return QObject::eventFilter(watched, event);
}

// A field whose text the program sets drops what was being composed, and no event reports that.
void Composition::noticeChange()
{
    composing = composing && byUser;
    byUser = false;
}

} // namespace tideloft::ui
