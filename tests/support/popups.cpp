// Catching menus and dialogs inside their own event loops.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/popups.h"

#include "tests/support/patience.h"
#include "tests/support/person.h"
#include "tests/support/waiting.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

bool withMenu(const std::function<void()> &open, const std::function<void(QMenu *)> &use)
{
    const Person<QMenu> person([&use](QMenu &menu) { use(&menu); });
    open();
    return person.hasSeen();
}

bool withDialog(const std::function<void()> &open, const std::function<void(QDialog &)> &use)
{
    const Person<QDialog> person([&use](QDialog &dialog) {
        // The window is active a moment before one of its widgets has the keyboard.
        if (!waitFor([&dialog] { return dialog.isAncestorOf(QApplication::focusWidget()); }, patience()))
            qFatal("The dialog does not get the keyboard");
        use(dialog);
    });
    open();
    return person.hasSeen();
}

QString broughtUp(const std::function<void()> &open)
{
    QString seen = u"nothing"_s;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&seen] {
        QWidget *menu = QApplication::activePopupWidget();
        QWidget *dialog = QApplication::activeModalWidget();
        if (!menu && !dialog)
            return;
        seen = menu ? u"menu"_s : dialog->windowTitle();
        (menu ? menu : dialog)->close();
    });
    watch.start(0);
    open();
    QCoreApplication::processEvents();
    return seen;
}

QStringList entriesOf(const QMenu *menu)
{
    QStringList entries;
    for (const QAction *action : menu->actions())
        entries.append(action->isSeparator() ? u"-"_s : action->text());
    return entries;
}

void clickEntry(QMenu *menu, int index)
{
    const QRect place = menu->actionGeometry(menu->actions().at(index));
    QTest::mouseMove(menu->windowHandle(), place.center());
    QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {}, place.center());
}

void pressAsAssistant(QMenu *menu, int index)
{
    QAccessibleInterface *entry = QAccessible::queryAccessibleInterface(menu)->child(index);
    entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

void press(const QWidget *widget, QPoint spot, Qt::MouseButton button)
{
    QTest::mousePress(widget->window()->windowHandle(), button, {}, widget->mapTo(widget->window(), spot));
}

void clickAt(const QWidget *widget, QPoint spot, Qt::MouseButton button)
{
    QTest::mouseClick(widget->window()->windowHandle(), button, {}, widget->mapTo(widget->window(), spot));
}

void clickOnScreen(const QWidget &target)
{
    clickAt(&target, target.rect().center());
}

void typeText(const QString &text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

} // namespace tideloft::tests
