// Drawing the ring over the widget that it marks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/focus_ring.h"

#include "ui/widgets/accessible_role.h"
#include "ui/widgets/emoji_delegate.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QListWidget>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr char radiusProperty[] = "focusRingRadius";
constexpr int usualRadius = 6;

// Two lines, white around black: whatever a button, a theme or an accent puts beside them, one of the two can
// be seen, and so can the edge between them.
class Ring : public QWidget
{
public:
    explicit Ring(QWidget *marked) : QWidget(marked)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        // What is marked may have a style without a selector, which would reach the ring.
        setStyleSheet(u"background: transparent; border: none;"_s);
        setAccessibleRole(this, QAccessible::Border);
        auto *list = qobject_cast<QListWidget *>(marked);
        if (!list)
            return;
        const auto redraw = [this] { update(); };
        connect(list, &QListWidget::currentItemChanged, this, redraw);
        connect(list->verticalScrollBar(), &QScrollBar::valueChanged, this, redraw);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        drawLine(painter, 0, Qt::white);
        drawLine(painter, lineWidth(), Qt::black);
    }

private:
    void drawLine(QPainter &painter, int distance, const QColor &colour) const
    {
        painter.setPen(QPen(colour, lineWidth()));
        const double inset = distance + lineWidth() / 2.0;
        const QRectF line = QRectF(place()).adjusted(inset, inset, -inset, -inset);
        const double curve = qMin(radius() - inset, qMin(line.width(), line.height()) / 2);
        painter.drawRoundedRect(line, curve, curve);
    }

    // The mark of a check box stands at its very edge.
    int lineWidth() const { return qobject_cast<const QCheckBox *>(parentWidget()) ? 1 : 2; }

    int radius() const
    {
        const QVariant own = parentWidget()->property(radiusProperty);
        return own.isValid() ? own.toInt() : usualRadius;
    }

    QRect place() const
    {
        const auto *list = qobject_cast<const QListWidget *>(parentWidget());
        const QListWidgetItem *entry = list ? list->currentItem() : nullptr;
        return entry ? list->visualItemRect(entry).translated(list->viewport()->pos()) : rect();
    }
};

// The toolkit's own frame would stand inside the entry, also for those who use the mouse.
class FramelessEntries : public EmojiDelegate
{
public:
    using EmojiDelegate::EmojiDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        EmojiDelegate::initStyleOption(option, index);
        option->state.setFlag(QStyle::State_HasFocus, false);
    }
};

// The ring is made when it is first needed: those who use the mouse pay nothing for it.
class RingKeeper : public QObject
{
public:
    explicit RingKeeper(QWidget *watched) : QObject(watched), widget(watched)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::FocusIn)
            enter(static_cast<QFocusEvent *>(event)->reason());
        else if (ring && event->type() == QEvent::FocusOut)
            ring->hide();
        else if (ring && event->type() == QEvent::Resize)
            ring->resize(widget->size());
        return QObject::eventFilter(watched, event);
    }

private:
    // A click takes the ring away, although the window still remembers that keys were used before. A widget
    // that gets the keyboard back from another window or from a closed menu has the ring if it had it before.
    void enter(Qt::FocusReason reason)
    {
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            clicked = reason == Qt::MouseFocusReason;
        if (!clicked && usesKeys(widget->window()))
            show();
    }

    // Someone who moves with keys in a window also does so in the window's boxes. Some of these have only one
    // button, so that no key moves anything there.
    static bool usesKeys(const QWidget *window)
    {
        if (window->testAttribute(Qt::WA_KeyboardFocusChange))
            return true;
        return window->parentWidget() && usesKeys(window->parentWidget()->window());
    }

    void show()
    {
        if (!ring)
            ring = new Ring(widget);
        ring->resize(widget->size());
        ring->raise();
        ring->show();
    }

    QWidget *widget;
    QPointer<Ring> ring;
    bool clicked = false; ///< the keyboard was brought here by a click
};

} // namespace

void ringFocus(QWidget *widget)
{
    new RingKeeper(widget); // owned by the widget
    if (auto *list = qobject_cast<QListWidget *>(widget))
        list->setItemDelegate(new FramelessEntries(list));
}

void roundFocusRing(QWidget *widget, int radius)
{
    widget->setProperty(radiusProperty, radius);
}

} // namespace tideloft::ui
