// A scroll area that is as high as what it holds, if it can.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/server_scroll.h"

#include "ui/style/rail_styles.h"

#include <QEvent>
#include <QScrollArea>
#include <QTimer>

namespace tideloft::ui
{

namespace
{

class ServerScroll : public QScrollArea
{
public:
    explicit ServerScroll(QWidget *parent) : QScrollArea(parent)
    {
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setStyleSheet(style::serverScroll);
    }

    QSize sizeHint() const override { return widget() ? widget()->sizeHint() : QSize(); }
    QSize minimumSizeHint() const override { return {sizeHint().width(), 0}; }

protected:
    // When the column changes, so does the height that this scroll area asks for.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

} // namespace

QScrollArea *makeServerScroll(QWidget *column, QWidget *parent)
{
    auto *scroll = new ServerScroll(parent);
    scroll->setWidget(column);
    column->setAutoFillBackground(false); // the rail shows through
    return scroll;
}

void scrollServerIntoView(QWidget *button)
{
    QTimer::singleShot(0, button, [button] { // behind the layout of what was just built
        auto *column = button->parentWidget();
        static_cast<ServerScroll *>(column->parentWidget()->parentWidget())
            ->ensureWidgetVisible(button, 0, 0);
    });
}

} // namespace tideloft::ui
