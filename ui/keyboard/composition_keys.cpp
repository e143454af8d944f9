// Watching for a composition.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/composition_keys.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace tideloft::ui
{

namespace
{

class CompositionKeys : public QObject
{
public:
    explicit CompositionKeys(QLineEdit *field) : QObject(field)
    {
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this, [this] { byUser = true; });
        connect(field, &QLineEdit::textChanged, this, &CompositionKeys::noticeChange);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::InputMethod)
            composing = !static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty();
        else if (event->type() == QEvent::FocusOut)
            composing = false; // the input method commits or drops it, and need not tell
        else if (event->type() == QEvent::KeyPress && swallows(*static_cast<QKeyEvent *>(event)))
            return true;
        return QObject::eventFilter(watched, event);
    }

private:
    // A field whose text the program sets drops what was being composed, and no event reports that.
    void noticeChange()
    {
        composing = composing && byUser;
        byUser = false;
    }

    // The key that ended a composition goes on to repeat itself while it is held down.
    bool swallows(const QKeyEvent &press)
    {
        if (press.key() != Qt::Key_Return && press.key() != Qt::Key_Enter)
            return false;
        if (!press.isAutoRepeat())
            endedOne = composing;
        if (composing)
            QGuiApplication::inputMethod()->commit(); // as the field itself does on these keys
        composing = false; // also when nothing was there to answer: the next Return counts
        return endedOne;
    }

    bool composing = false;
    bool byUser = false;   ///< the next change that is reported was typed or committed
    bool endedOne = false; ///< the last of these keys that was pressed ended a composition
};

} // namespace

void keepCompositionKeys(QLineEdit *field)
{
    new CompositionKeys(field); // owned by the field
}

} // namespace tideloft::ui
