// One line of the empty state: an icon and a short text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/hint_row.h"

#include <QHBoxLayout>
#include <QLabel>

namespace tideloft::ui
{

using namespace Qt::StringLiterals;

static QLabel *makeLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

QWidget *makeHintRow(const QString &icon, const QString &text, QWidget *parent)
{
    auto *row = new QWidget(parent);
    row->setObjectName(u"hintRow"_s);
    auto *iconLabel = makeLabel(u"hintIcon"_s, icon, row);
    iconLabel->setFixedWidth(20);
    iconLabel->setAlignment(Qt::AlignCenter);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(iconLabel, 0);
    layout->addWidget(makeLabel(u"hintText"_s, text, row), 1);
    return row;
}

} // namespace tideloft::ui
