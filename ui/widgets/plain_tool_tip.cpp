// Escaping a tool tip at the moment it is shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/plain_tool_tip.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/emoji_formats.h"

#include <QApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// A tip is for a glance: beyond this it would cover the screen.
constexpr TextLimits tipLimits{.characters = 300, .lines = 10, .emoji = 100, .effort = 30'000};

/// What stands around the text of a tip, and some more for the arrow of the mouse.
constexpr QSize tipFrame(40, 40);

/// TEXT in lines that keep to ROOM, its words broken where they are wider; what has no room is left out.
QStringList linesWithin(const QSize &room, QString text, const QFont &font)
{
    QTextLayout layout(text.replace(u'\n', QChar::LineSeparator).replace(u'\t', u' '), font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    qreal height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room.width());
        height += line.height();
        if (height > room.height())
            return lines << u"…"_s;
        lines << text.sliced(line.textStart(), line.textLength()).remove(QChar::LineSeparator);
    }
    return lines;
}

/// The tip on the screen; null if there is none.
const QWidget *shownTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->inherits("QTipLabel") && window->isVisible();
    });
    return tip == windows.end() ? nullptr : *tip;
}

QString asLines(QStringList lines)
{
    for (QString &line : lines)
        line = line.toHtmlEscaped();
    return withEmojiSpans(u"<p style='white-space:pre'>"_s + lines.join(u"<br/>"_s) + u"</p>"_s);
}

/// Shows TEXT as the toolkit lays it out, unless that is larger than half the screen: the toolkit breaks no
/// word. The tip is measured as it stands, with what the style sheet puts around it. Some letters are drawn
/// wider than they are counted: their lines are broken once more, for less room.
void showBounded(const QPoint &position, const QString &text, QWidget *widget)
{
    QToolTip::showText(position, withEmojiSpans(Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal)),
                       widget);
    const QSize most = widget->screen()->availableSize() / 2;
    QSize room = most - tipFrame;
    for (int tries = 0; tries < 3; ++tries) {
        const QWidget *tip = shownTip();
        if (!tip || tip->size().expandedTo(most) == most)
            return;
        QToolTip::showText(position, asLines(linesWithin(room, text, tip->font())), widget);
        room -= tipFrame;
    }
}

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
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            // The window lends the tip its sheet. The widget's own style may have no selector and reach the
            // tip.
            showBounded(static_cast<QHelpEvent *>(event)->globalPos(), tip, widget->window());
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
