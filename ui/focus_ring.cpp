// Drawing the ring over the widget that it marks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/focus_ring.h"

#include "ui/accessible_role.h"
#include "ui/style/accent.h"

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

class Ring : public QWidget
{
public:
    explicit Ring(QWidget *marked) : QWidget(marked)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setStyleSheet(u"background: transparent;"_s); // a page's own sheet would fill it
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
        painter.setPen(QPen(QColor(defaultAccent), 2));
        painter.drawRoundedRect(QRectF(place()).adjusted(1, 1, -1, -1), 6, 6);
    }

private:
    QRect place() const
    {
        const auto *list = qobject_cast<const QListWidget *>(parentWidget());
        const QListWidgetItem *entry = list ? list->currentItem() : nullptr;
        return entry ? list->visualItemRect(entry).translated(list->viewport()->pos()) : rect();
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
    // The window remembers for ever that keys moved the keyboard in it; what a click reaches is not marked
    // for that. When the window or a closed menu gives the keyboard back, all is as it was.
    void enter(Qt::FocusReason reason)
    {
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            clicked = reason == Qt::MouseFocusReason;
        if (!clicked && widget->window()->testAttribute(Qt::WA_KeyboardFocusChange))
            show();
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
}

} // namespace tideloft::ui
