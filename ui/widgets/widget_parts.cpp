// Labels, boxes, lines and buttons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/widget_parts.h"

#include "ui/widgets/emoji_label.h"
#include "ui/widgets/focus_ring.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace tideloft::ui
{

QLabel *makeLabel(const QString &text, QWidget *parent, const QString &objectName)
{
    auto *label = new EmojiLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setObjectName(objectName);
    return label;
}

QLabel *makeStyledLabel(const QString &text, const QString &style, QWidget *parent)
{
    auto *label = makeLabel(text, parent);
    label->setStyleSheet(style);
    return label;
}

QWidget *makeBox(QWidget *parent, const QString &objectName)
{
    auto *box = new QWidget(parent);
    box->setObjectName(objectName);
    box->setAttribute(Qt::WA_StyledBackground);
    return box;
}

QFrame *makeRule(QWidget *parent, const QString &objectName)
{
    auto *rule = new QFrame(parent);
    rule->setObjectName(objectName);
    rule->setFrameShape(QFrame::HLine);
    return rule;
}

QPushButton *makeButton(const QString &text, QWidget *parent, const QString &objectName)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(objectName);
    button->setCursor(Qt::PointingHandCursor);
    ringFocus(button);
    return button;
}

QVBoxLayout *makeColumnLayout(QWidget *owner, int spacing)
{
    auto *column = new QVBoxLayout(owner);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

QHBoxLayout *makeRowLayout(QWidget *owner, int spacing)
{
    auto *layout = new QHBoxLayout(owner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

} // namespace tideloft::ui
