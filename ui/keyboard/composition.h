// Whether an input method composes a text in a field.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QLineEdit;

namespace tideloft::ui
{

/// Follows what an input method does in its field, and goes with it.
class Composition : public QObject
{
public:
    explicit Composition(QLineEdit *field);

    /// True while the field shows a text that is not committed yet. Slots of the field's textChanged() that
    /// are connected later than this object is made find here what is true after the change.
    [[nodiscard]] bool isActive() const { return composing; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void end() { composing = false; }

private:
    void noticeChange();

    bool composing = false;
    bool byUser = false; ///< the next change that is reported was typed or committed
};

} // namespace tideloft::ui
