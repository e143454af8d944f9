// The text of a message in its bubble.
#pragma once

#include <QLabel>

namespace tideloft::ui
{

/// A wrapped, selectable label that is as wide as its text, up to the width of a bubble. A plain label would
/// fold even a short text into a block of its own liking.
class BubbleText : public QLabel
{
    Q_OBJECT

public:
    BubbleText(const QString &text, QWidget *parent);

    QSize sizeHint() const override;
};

} // namespace tideloft::ui
