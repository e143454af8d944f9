// The painted background of the sign-in page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tideloft::ui
{

/// A dark surface with a faint grid of 32 pixels, anchored at its top left corner; it ignores the theme.
class GridWidget : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tideloft::ui
