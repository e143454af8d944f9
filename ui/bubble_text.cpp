// Sizing of a message's text.
#include "ui/bubble_text.h"

#include "ui/style/inline_styles.h"

#include <QTextDocument>
#include <QTextOption>

namespace tideloft::ui
{

namespace
{

// A bubble is at most 520 px wide and keeps 12 px on either side of its text.
constexpr int widestText = 520 - 2 * 12;

// Below this length a word fits into a bubble in the narrowest window, whatever its letters.
constexpr int longWord = 24;

// Lines break at blanks, except at those made to hold words together.
bool endsWord(QChar character)
{
    return character.isSpace() && character != QChar::Nbsp && character != u'\u2007'
           && character != u'\u202f';
}

bool containsLongWord(const QString &text)
{
    int length = 0;
    for (const QChar character : text) {
        length = endsWord(character) ? 0 : length + 1;
        if (length > longWord)
            return true;
    }
    return false;
}

} // namespace

BubbleText::BubbleText(const QString &text, QWidget *parent)
    : QLabel(parent),
      hasLongWord(containsLongWord(text))
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

// A label's own hint is as wide as its widest word.
QSize BubbleText::minimumSizeHint() const
{
    const QSize hint = QLabel::minimumSizeHint();
    return hasLongWord ? QSize(fontMetrics().averageCharWidth(), hint.height()) : hint;
}

int BubbleText::heightForWidth(int width) const
{
    if (hasLongWord)
        breakLongWords(width);
    return QLabel::heightForWidth(width);
}

void BubbleText::paintEvent(QPaintEvent *event)
{
    if (hasLongWord)
        breakLongWords(width());
    QLabel::paintEvent(event);
}

void BubbleText::breakLongWords(int width) const
{
    QLabel::heightForWidth(width); // lays the text out if anything changed, and sets its own wrapping
    auto *document = findChild<QTextDocument *>();
    if (!document)
        return;
    QTextOption option = document->defaultTextOption();
    if (option.wrapMode() == QTextOption::WrapAtWordBoundaryOrAnywhere)
        return;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document->setDefaultTextOption(option);
}

} // namespace tideloft::ui
