// A page of a stack that is laid out lazily: not before it is shown for the first time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace tideloft::ui
{

/// A stack asks all its pages for their sizes, the hidden ones too, and a page answers by styling its widgets
/// and laying out their texts. This one asks for no room until it is shown for the first time. With
/// fillUnstyled() its widgets have no style before then either, whoever is shown around them.
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
        if (visible && !measured)
            styleAll();
        measured = measured || visible;
        QWidget::setVisible(visible);
    }

protected:
    /// Calls MAKEPARTS, which makes the page's widgets, and leaves them without a style. For a page that has
    /// no child yet: a widget hands its style to its children when it gets one.
    template <typename MakeParts> void fillUnstyled(const MakeParts &makeParts)
    {
        ensurePolished();
        makeParts();
        for (QObject *part : children())
            withdrawStyleRequests(part);
    }

private:
    /// Each widget has asked for a style by an event.
    static void withdrawStyleRequests(QObject *part)
    {
        QCoreApplication::removePostedEvents(part, QEvent::PolishRequest);
        for (QObject *child : part->children())
            withdrawStyleRequests(child);
    }

    void styleAll()
    {
        for (const QObject *part : children()) {
            if (part->isWidgetType())
                static_cast<const QWidget *>(part)->ensurePolished();
        }
    }

    bool measured = false;
};

} // namespace tideloft::ui
