// Escaping a tool tip at the moment it is shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/plain_tool_tip.h"

#include "ui/bounded_text.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// A tip is for a glance: beyond this it would cover the screen.
constexpr TextLimits tipLimits{.characters = 300, .lines = 10, .emoji = 100, .effort = 30'000};

class PlainToolTip : public QObject
{
public:
    explicit PlainToolTip(QWidget *shown) : QObject(shown), widget(shown)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ToolTip)
            return QObject::eventFilter(watched, event);
        const QString tip = firstPart(widget->toolTip(), tipLimits);
        const QString shown = tip.isEmpty() ? tip : Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal);
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), shown, widget);
        return true;
    }

private:
    QWidget *widget;
};

} // namespace

void showToolTipAsPlainText(QWidget *widget)
{
    new PlainToolTip(widget); // owned by the widget
}

} // namespace tideloft::ui
