// Keys that click.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/click_keys.h"

#include <QKeyEvent>
#include <QListWidget>

namespace tideloft::ui
{

namespace
{

class ClickKeys : public QObject
{
public:
    ClickKeys(QWidget *watched, std::function<void()> run) : QObject(watched), click(std::move(run))
    {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || !clicks(*static_cast<QKeyEvent *>(event)))
            return QObject::eventFilter(watched, event);
        click();
        return true;
    }

private:
    static bool clicks(const QKeyEvent &press)
    {
        const bool plain = press.modifiers() == Qt::NoModifier || press.modifiers() == Qt::KeypadModifier;
        return plain && !press.isAutoRepeat()
               && (press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter
                   || press.key() == Qt::Key_Space);
    }

    std::function<void()> click;
};

} // namespace

void clickByKeys(QListWidget *list)
{
    new ClickKeys(list, [list] { // owned by the list
        if (QListWidgetItem *entry = list->currentItem())
            emit list->itemClicked(entry);
    });
}

void clickByKeys(QWidget *widget, const std::function<void()> &click)
{
    widget->setFocusPolicy(Qt::TabFocus);
    new ClickKeys(widget, click); // owned by the widget
}

} // namespace tideloft::ui
