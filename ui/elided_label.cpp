// Cutting a text at the moment it is drawn.
#include "ui/elided_label.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace tideloft::ui
{

ElidedLabel::ElidedLabel(const QString &text, QWidget *parent, const QString &objectName) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setText(text);
    setObjectName(objectName);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    if (fontMetrics().horizontalAdvance(text()) <= contentsRect().width()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const QString cut = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          cut, foregroundRole());
}

} // namespace tideloft::ui
