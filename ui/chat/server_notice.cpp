// Building the notice of an open server.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/server_notice.h"

#include "ui/style/chat_styles.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>

namespace tideloft::ui
{

QWidget *makeServerNotice(const QString &text, QWidget *parent)
{
    auto *row = new QWidget(parent);
    auto *label = makeStyledLabel(text, style::serverNotice, row);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    auto *column = new QVBoxLayout(row);
    column->addWidget(label);
    return row;
}

} // namespace tideloft::ui
