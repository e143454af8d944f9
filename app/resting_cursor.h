// A text cursor that stops blinking when nobody is there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>

namespace tideloft::app
{

/// A blinking cursor wakes the program and paints twice a second for as long as its window stands open. This
/// lets it blink for a while after the last key, click or change of focus, and then stand still, visible; the
/// next of them wakes it again. A system whose cursors never blink is left alone.
class RestingCursor : public QObject
{
    Q_OBJECT

public:
    explicit RestingCursor(std::chrono::milliseconds patience = std::chrono::seconds(10));
    Q_DISABLE_COPY_MOVE(RestingCursor)
    ~RestingCursor() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void rest();
    void wake() const;

    const int flashTime; ///< the system's own, in ms
    QTimer timer;
};

} // namespace tideloft::app
