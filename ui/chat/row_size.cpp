// What the layouts of a message's row and of a day separator come to.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/row_size.h"

#include "ui/chat/bubble_size.h"
#include "ui/chat/bubble_text.h"
#include "ui/chat/day_separator.h"
#include "ui/chat/message_row.h"
#include "ui/lists/polish_tree.h"
#include "ui/texts/bounded_text.h"
#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/emoji_line.h"

#include <QFontMetrics>
#include <QLayout>
#include <QtMath>

#include <memory>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr int avatarWidth = 34;

/// A plain label of one line.
QSize labelSize(const QString &text, const QFont &font)
{
    const QFontMetrics metrics(font);
    if (text.isEmpty())
        return {metrics.averageCharWidth(), metrics.lineSpacing()};
    const QRect room(0, 0, 2'000, 2'000); // the toolkit's own
    return metrics.boundingRect(room, Qt::AlignLeft | Qt::TextExpandTabs, text).size();
}

/// A label that is cut where it has no room; see ElidedLabel.
QSize nameSize(const QString &name, const QFont &font)
{
    const QString line = inOneLine(name);
    const bool hasEmoji = hasEmojiFormats(line);
    if (line == name && !hasEmoji)
        return labelSize(name, font);
    const QFontMetrics metrics(font);
    return {hasEmoji ? qCeil(EmojiLine(line, font).width()) : metrics.horizontalAdvance(line),
            metrics.height()};
}

/// What stands in a bubble above and below its text.
struct BubbleFrame {
    int width = 0; ///< of the widest part
    int height = 8 + 8;

    void add(QSize part)
    {
        width = qMax(width, part.width());
        height += part.height() + 3;
    }
};

BubbleFrame bubbleFrame(const MessageRowModel &model, const RowFonts &fonts)
{
    BubbleFrame frame;
    if (model.showsSender())
        frame.add(nameSize(model.sender, fonts.name));
    if (!model.time.isEmpty())
        frame.add(labelSize(model.time, fonts.time));
    return frame;
}

// A label without text is as high as a line at any width.
int textHeightIn(int width, const MessageRowModel &model, QSize natural, const RowFonts &fonts)
{
    if (model.text.value().isEmpty())
        return qMax(natural.height(), QFontMetrics(fonts.text).lineSpacing());
    return width >= natural.width() && width <= widestBubbleText
               ? natural.height()
               : bubbleTextHeight(model.text.value(), fonts.text, width);
}

RowSize sizeOf(const MessageRowModel &model, int listWidth, const RowFonts &fonts, const RowSize &known)
{
    const QMargins margins = MessageRow::margins(model);
    const int beside = margins.left() + margins.right() + (model.isMine ? 0 : avatarWidth + 8);
    const QSize natural = known.text.isValid() ? known.text : bubbleTextSize(model.text.value(), fonts.text);
    const int textWidth = qMax(natural.width(), QFontMetrics(fonts.text).averageCharWidth());
    const BubbleFrame frame = bubbleFrame(model, fonts);
    const int padding = 2 * bubblePadding;
    const int wanted = qMin(qMax(frame.width, textWidth) + padding, widestBubble);
    const int width = qMin(wanted + beside, listWidth);
    const int inBubble = width - beside - padding;
    const bool isKnown = known.wrapped.isValid() && known.wrapped.width() == inBubble;
    const QSize wrapped(inBubble,
                        isKnown ? known.wrapped.height() : textHeightIn(inBubble, model, natural, fonts));
    const int bubble = frame.height + wrapped.height();
    const int content = model.showsSender() ? qMax(bubble, avatarWidth) : bubble;
    return {{width, content + margins.top() + margins.bottom()}, natural, wrapped};
}

RowSize sizeOf(const DaySeparatorModel &model, const RowFonts &fonts)
{
    const QSize label = labelSize(model.label, fonts.day);
    return {{40 + label.width() + 2 * fonts.daySpacing + 40, 18 + qMax(label.height(), 1) + 10}, {}, {}};
}

} // namespace

RowFonts rowFonts(QWidget *viewport)
{
    const MessageRowModel everything{.sender = u"x"_s, .text = u"x"_s, .time = u"x"_s};
    const auto row = std::make_unique<MessageRow>(everything, viewport);
    const auto day = std::unique_ptr<QWidget>(makeDaySeparator({u"x"_s}, viewport));
    polishTree(row.get());
    polishTree(day.get());
    const QLayout *bubble = row->text()->parentWidget()->layout();
    return {.name = bubble->itemAt(0)->widget()->font(),
            .text = row->text()->font(),
            .time = bubble->itemAt(2)->widget()->font(),
            .day = day->layout()->itemAt(1)->widget()->font(),
            .daySpacing = day->layout()->spacing()};
}

RowSize rowSize(const HistoryRow &row, int listWidth, const RowFonts &fonts, const RowSize &known)
{
    if (const auto *day = std::get_if<DaySeparatorModel>(&row))
        return sizeOf(*day, fonts);
    return sizeOf(std::get<MessageRowModel>(row), listWidth, fonts, known);
}

} // namespace tideloft::ui
