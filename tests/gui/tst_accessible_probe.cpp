// Asking the widgets what they tell assistive programs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_accessible_probe.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMetaEnum>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

bool isControl(const QWidget *widget)
{
    return widget->focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton *>(widget)
           || qobject_cast<const QAbstractItemView *>(widget) || qobject_cast<const QLineEdit *>(widget)
           || qobject_cast<const QComboBox *>(widget);
}

QString toldOf(const QAccessibleInterface *spoken)
{
    return told(spoken->role(), spoken->text(QAccessible::Name), spoken->text(QAccessible::Description));
}

QStringList entriesOfMenu(const QAccessibleInterface *menu)
{
    QStringList entries;
    for (int i = 0; i < menu->childCount(); ++i) {
        if (menu->child(i)->role() != QAccessible::Separator)
            entries.append(toldOf(menu->child(i)));
    }
    return entries;
}

} // namespace

QAccessibleInterface *spokenOf(const QWidget *widget)
{
    auto *spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
    if (!spoken || !spoken->isValid())
        qFatal("Nothing is told of a %s", widget->metaObject()->className());
    return spoken;
}

QString spokenName(const QWidget *widget)
{
    return spokenOf(widget)->text(QAccessible::Name);
}

QString spokenDescription(const QWidget *widget)
{
    return spokenOf(widget)->text(QAccessible::Description);
}

QString told(QAccessible::Role role, const QString &name, const QString &description)
{
    const char *key = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    const QString said = QString::fromLatin1(key) + u": "_s + name;
    return description.isEmpty() ? said : said + u" ("_s + description + u')';
}

QStringList controlsBelow(const QWidget *root, const QList<const QWidget *> &except)
{
    if (qobject_cast<const QMenu *>(root))
        return entriesOfMenu(spokenOf(root));
    QStringList found;
    if (isControl(root))
        found.append(toldOf(spokenOf(root)));
    for (const auto *widget : root->findChildren<QWidget *>()) {
        const bool isLeftOut = std::any_of(except.begin(), except.end(), [widget](const QWidget *part) {
            return part == widget || part->isAncestorOf(widget);
        });
        if (!isLeftOut && widget->isVisible() && isControl(widget))
            found.append(toldOf(spokenOf(widget)));
    }
    return found;
}

QStringList spokenEntries(const QWidget *list)
{
    const QAccessibleInterface *spoken = spokenOf(list);
    QStringList names;
    for (int i = 0; i < spoken->childCount(); ++i)
        names.append(spoken->child(i)->text(QAccessible::Name));
    return names;
}

} // namespace tideloft::tests
