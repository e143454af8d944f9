// A page of a stack that is laid out lazily: not before it is shown for the first time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tideloft::ui
{

/// A stack asks all its pages for their sizes, the hidden ones too, and a page answers by styling its widgets
/// and laying out their texts. This one asks for no room until it is shown for the first time.
class LazyPage : public QWidget
{
    Q_OBJECT

public:
    explicit LazyPage(QWidget *parent) : QWidget(parent) {}
    [[nodiscard]] QSize sizeHint() const override { return measured ? QWidget::sizeHint() : QSize(0, 0); }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return measured ? QWidget::minimumSizeHint() : QSize(0, 0);
    }
    [[nodiscard]] bool hasHeightForWidth() const override { return measured && QWidget::hasHeightForWidth(); }
    [[nodiscard]] int heightForWidth(int width) const override
    {
        return measured ? QWidget::heightForWidth(width) : -1;
    }
    void setVisible(bool visible) override
    {
        measured = measured || visible;
        QWidget::setVisible(visible);
    }

private:
    bool measured = false;
};

} // namespace tideloft::ui
