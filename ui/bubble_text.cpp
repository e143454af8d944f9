// Sizing of a message's text.
#include "ui/bubble_text.h"

#include "ui/style/inline_styles.h"

namespace tideloft::ui
{

namespace
{

// A bubble is at most 520 px wide and keeps 12 px on either side of its text.
constexpr int widestText = 520 - 2 * 12;

} // namespace

BubbleText::BubbleText(const QString &text, QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setText(text);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setStyleSheet(style::messageText());
}

QSize BubbleText::sizeHint() const
{
    ensurePolished();
    const QRect wrapped =
        fontMetrics().boundingRect(QRect(0, 0, widestText, QWIDGETSIZE_MAX), Qt::TextWordWrap, text());
    // The layout measures in fractions of a pixel: one pixel more keeps the last word on its line.
    const int width = qMin(wrapped.width() + 1, widestText);
    return {width, heightForWidth(width)};
}

} // namespace tideloft::ui
