// What lies in a layout, as a text that a test can expect.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"

#include <QAbstractButton>
#include <QBoxLayout>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QString describe(QLayoutItem *item)
{
    if (const auto *inner = qobject_cast<const QBoxLayout *>(item->layout()))
        return u"[%1]"_s.arg(itemsOf(inner));
    if (const QSpacerItem *spacer = item->spacerItem()) {
        if (spacer->expandingDirections() != Qt::Orientations())
            return u"stretch"_s;
        return QString::number(std::max(spacer->sizeHint().width(), spacer->sizeHint().height()));
    }
    const QWidget *widget = item->widget();
    const QString name = widget->objectName();
    const QString shown =
        name.isEmpty() ? QString::fromLatin1(widget->metaObject()->className()) : u'#' + name;
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    return button ? u"%1(%2)"_s.arg(shown, button->text()) : shown;
}

const QBoxLayout *boxOf(const QWidget *owner)
{
    const auto *layout = qobject_cast<const QBoxLayout *>(owner->layout());
    if (!layout)
        qFatal("%s has no box layout", qPrintable(owner->objectName()));
    return layout;
}

} // namespace

QString itemsOf(const QBoxLayout *layout)
{
    QStringList items;
    for (int i = 0; i < layout->count(); ++i) {
        const int factor = layout->stretch(i);
        items.append(describe(layout->itemAt(i)) + (factor ? u"*%1"_s.arg(factor) : QString()));
    }
    return items.join(u' ');
}

QString itemsOf(const QWidget *owner)
{
    return itemsOf(boxOf(owner));
}

QString spacesOf(const QWidget *owner)
{
    const QBoxLayout *layout = boxOf(owner);
    const QMargins margins = layout->contentsMargins();
    return u"%1 %2 %3 %4, spacing %5"_s.arg(margins.left())
        .arg(margins.top())
        .arg(margins.right())
        .arg(margins.bottom())
        .arg(layout->spacing());
}

} // namespace tideloft::tests
