// Building a day separator.
#include "ui/day_separator.h"

#include "ui/style/inline_styles.h"
#include "ui/widget_parts.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>

namespace tideloft::ui
{

namespace
{

// The style's background is the line: what the frame itself would draw has no width, or it would cover the
// colour.
QFrame *makeDayLine(QWidget *row)
{
    auto *rule = makeRule(row);
    rule->setFrameShadow(QFrame::Sunken);
    rule->setLineWidth(0);
    rule->setFixedHeight(1);
    rule->setStyleSheet(style::dayLine());
    return rule;
}

} // namespace

QWidget *makeDaySeparator(const DaySeparatorModel &model, QWidget *parent)
{
    auto *row = makeBox(parent);
    row->setAttribute(Qt::WA_TranslucentBackground);
    row->setStyleSheet(style::rowBackground());
    auto *day = makeLabel(model.label, row);
    day->setAlignment(Qt::AlignCenter);
    day->setStyleSheet(style::dayLabel());
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(40, 18, 40, 10);
    line->addWidget(makeDayLine(row), 1);
    line->addWidget(day);
    line->addWidget(makeDayLine(row), 1);
    return row;
}

} // namespace tideloft::ui
