// Reading a list and its rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_list_state.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

template <typename Value> QString shown(const Value &value)
{
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

QString lookOf(const QWidget *widget)
{
    QString look = QString::fromLatin1(widget->metaObject()->className()) + u' ' + shown(widget->geometry())
                   + (widget->isVisible() ? u" visible "_s : u" hidden "_s) + widget->styleSheet() + u' '
                   + widget->accessibleName() + u' ' + shown(widget->font().toString())
                   + shown(widget->palette().color(widget->foregroundRole()));
    if (widget->layout())
        look += shown(widget->layout()->contentsMargins());
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        look += label->text() + shown(label->alignment()) + shown(label->textInteractionFlags());
    return look;
}

} // namespace

void settleWidgets()
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QStringList listState(const QListWidget *list)
{
    QStringList lines;
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem *entry = list->item(i);
        const QWidget *row = list->itemWidget(entry);
        lines.append(u"entry %1 "_s.arg(i) + shown(entry->flags()) + shown(entry->sizeHint())
                     + shown(entry->data(Qt::UserRole)) + shown(entry->data(Qt::AccessibleTextRole))
                     + shown(list->visualItemRect(entry))
                     + (entry->isSelected() ? u"selected"_s : QString()));
        if (!row)
            continue;
        lines.append(lookOf(row));
        for (const QWidget *part : row->findChildren<QWidget *>())
            lines.append(lookOf(part));
    }
    lines.append(u"current %1, scrolled %2 of %3, %4 widgets"_s.arg(list->currentRow())
                     .arg(list->verticalScrollBar()->value())
                     .arg(list->verticalScrollBar()->maximum())
                     .arg(list->viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size()));
    return lines;
}

} // namespace tideloft::tests
