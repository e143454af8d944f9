// Building a day separator.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/day_separator.h"

#include "ui/style/chat_styles.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>

namespace tideloft::ui
{

namespace
{

// A plain box whose background is the rule: a frame would draw a border of its own over it, three pixels
// high.
QWidget *makeDayRule(QWidget *row)
{
    auto *rule = makeBox(row);
    rule->setFixedHeight(1); // whatever the style sheet says, and when
    rule->setStyleSheet(style::dayLine);
    return rule;
}

} // namespace

QWidget *makeDaySeparator(const DaySeparatorModel &model, QWidget *parent)
{
    auto *row = makeBox(parent);
    row->setAttribute(Qt::WA_TranslucentBackground);
    row->setStyleSheet(style::historyRow);
    auto *day = makeLabel(model.label, row);
    day->setAlignment(Qt::AlignCenter);
    day->setStyleSheet(style::dayLabel);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(40, 18, 40, 10);
    layout->addWidget(makeDayRule(row), 1);
    layout->addWidget(day);
    layout->addWidget(makeDayRule(row), 1);
    return row;
}

} // namespace tideloft::ui
