// Keeping an error in its place.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/error_label.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/text_height.h"

#include <QPainter>

namespace tideloft::ui
{

namespace
{

constexpr auto broken = QTextOption::WrapAtWordBoundaryOrAnywhere;

/// TEXT with blanks in place of the character at which the toolkit splits a text into variants, of which it
/// draws one.
QString allVariants(QString text)
{
    return text.replace(variantSeparator, u' ');
}

} // namespace

ErrorLabel::ErrorLabel(QWidget *parent, const QString &objectName) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setObjectName(objectName);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
}

QSize ErrorLabel::minimumSizeHint() const
{
    return {0, qMin(QLabel::minimumSizeHint().height(), 2 * fontMetrics().lineSpacing() + 14)};
}

// The flags are those with which a label draws.
bool ErrorLabel::hasWordBeyond(int room) const
{
    const QRect place(0, 0, room, QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(place, Qt::TextWordWrap | Qt::TextExpandTabs, text()).width() > room;
}

int ErrorLabel::heightForWidth(int width) const
{
    const QSize frame = size() - contentsRect().size();
    const int room = width - frame.width();
    if (text().contains(variantSeparator))
        return frame.height() + textHeight(allVariants(text()), font(), room, broken);
    const int height = QLabel::heightForWidth(width);
    if (!hasWordBeyond(room))
        return height;
    const auto heightWith = [&](QTextOption::WrapMode mode) {
        return textHeight(text(), font(), room, mode);
    };
    return height + heightWith(broken) - heightWith(QTextOption::WordWrap);
}

// A label breaks lines between words only, and centres a text that is too high: its first lines are lost.
void ErrorLabel::paintEvent(QPaintEvent *event)
{
    const bool fits = heightForWidth(width()) <= height();
    const bool isWhole = !text().contains(variantSeparator);
    if (fits && isWhole && !hasWordBeyond(contentsRect().width())) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    QTextOption option(fits ? Qt::AlignCenter : Qt::AlignHCenter | Qt::AlignTop);
    option.setWrapMode(broken);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), allVariants(text()), option);
}

} // namespace tideloft::ui
