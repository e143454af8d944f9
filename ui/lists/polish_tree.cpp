// Styles for a widget and all in it at once, from the outside in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/polish_tree.h"

#include <QWidget>

void tideloft::ui::polishTree(QWidget *widget)
{
    widget->ensurePolished();
    for (QObject *child : widget->children()) {
        if (child->isWidgetType())
            polishTree(static_cast<QWidget *>(child));
    }
}
