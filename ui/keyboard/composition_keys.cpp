// Keeping keys from a field that an input method composes in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/composition_keys.h"

#include "ui/keyboard/composition.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLineEdit>

namespace tideloft::ui
{

namespace
{

class CompositionKeys : public Composition
{
public:
    using Composition::Composition;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && swallows(*static_cast<QKeyEvent *>(event)))
            return true;
        return Composition::eventFilter(watched, event);
    }

private:
    // While the key that ended a composition is held down, its repeated presses are swallowed as well.
    bool swallows(const QKeyEvent &press)
    {
        if (press.key() != Qt::Key_Return && press.key() != Qt::Key_Enter)
            return false;
        if (!press.isAutoRepeat())
            endedOne = isActive();
        if (isActive())
            QGuiApplication::inputMethod()->commit(); // as the field itself does on these keys
        end(); // also when nothing was there to answer: the next Return counts
        return endedOne;
    }

    bool endedOne = false; ///< the last of these keys that was pressed ended a composition
};

} // namespace

void keepCompositionKeys(QLineEdit *field)
{
    new CompositionKeys(field); // owned by the field
}

} // namespace tideloft::ui
