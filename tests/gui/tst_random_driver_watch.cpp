// Looking for what must never be.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_random_driver_watch.h"

#include "ui/rail/create_server_dialog.h"

#include <QApplication>
#include <QListWidget>
#include <QTest>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QString firstWarning;
QtMessageHandler handlerBefore = nullptr;

// The client's own words, and what the platform without a screen says of windows it cannot move.
bool isExpected(const QString &message)
{
    return message.startsWith(u"Device key registration failed:"_s)
           || message.startsWith(u"This plugin does not support"_s);
}

void keepWarning(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (isExpected(message)) // one line for thousands would bury the rest
        return;
    if (type != QtDebugMsg && type != QtInfoMsg && firstWarning.isEmpty())
        firstWarning = message.left(500);
    handlerBefore(type, context, message);
}

qsizetype visiblePages(const QStackedWidget *stack)
{
    qsizetype visible = 0;
    for (int i = 0; i < stack->count(); ++i)
        visible += stack->widget(i)->isHidden() ? 0 : 1;
    return visible;
}

QString faultOfStack(const QStackedWidget *stack)
{
    if (stack->currentWidget() && !stack->currentWidget()->isHidden() && visiblePages(stack) == 1)
        return {};
    return u"%1 pages of %2 are shown at once"_s.arg(visiblePages(stack)).arg(stack->count());
}

QString faultOfEntries(const QListWidget *list)
{
    const QRect seen = list->viewport()->rect();
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem *entry = list->item(i);
        if (!list->itemWidget(entry) && list->visualItemRect(entry).intersects(seen))
            return list->objectName() + u" has an entry without a row"_s;
    }
    return {};
}

qsizetype rowCount(const QListWidget *list)
{
    qsizetype rows = 0;
    for (int i = 0; i < list->count(); ++i)
        rows += list->itemWidget(list->item(i)) ? 1 : 0;
    return rows;
}

// The create dialog is kept after it was closed; whatever else was opened has to go.
QString faultOfWindows()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto kept = std::count_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return !window->isVisible() && qobject_cast<const ui::CreateServerDialog *>(window);
    });
    const auto shown = std::count_if(windows.begin(), windows.end(), [](auto *w) { return w->isVisible(); });
    if (windows.size() - kept <= 60 && shown <= 40)
        return {};
    return u"%1 windows, %2 of them shown"_s.arg(windows.size() - kept).arg(shown);
}

} // namespace

KeyStorage::KeyStorage() : before(std::pmr::set_default_resource(this)) {}

KeyStorage::~KeyStorage()
{
    std::pmr::set_default_resource(before);
}

bool KeyStorage::holdsAnything() const
{
    return std::any_of(blocks.begin(), blocks.end(), [](const auto &block) {
        return std::any_of(block.first, block.first + block.second, [](char byte) { return byte != 0; });
    });
}

void *KeyStorage::do_allocate(std::size_t bytes, std::size_t alignment)
{
    auto *place = static_cast<char *>(before->allocate(bytes, alignment));
    std::memset(place, 0, bytes); // what was not used holds nothing
    blocks.emplace(place, bytes);
    return place;
}

void KeyStorage::do_deallocate(void *place, std::size_t bytes, std::size_t alignment)
{
    blocks.erase(static_cast<char *>(place));
    before->deallocate(place, bytes, alignment);
}

WarningWatch::WarningWatch()
{
    firstWarning.clear();
    handlerBefore = qInstallMessageHandler(keepWarning);
}

WarningWatch::~WarningWatch()
{
    qInstallMessageHandler(handlerBefore);
}

const QString &WarningWatch::warning()
{
    return firstWarning;
}

QString leftOverRows(const GuiProbe &probe)
{
    for (const char16_t *name : {u"dmList", u"messageList"}) {
        const auto *list = probe.the<QListWidget>(QString::fromUtf16(name));
        const auto rows =
            list->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size();
        if (rows != rowCount(list))
            return u"%1 has %2 rows in its entries and %3 below it"_s.arg(list->objectName())
                .arg(rowCount(list))
                .arg(rows);
    }
    return {};
}

QString faultOf(const GuiProbe &probe, const KeyStorage &keys)
{
    if (!WarningWatch::warning().isEmpty())
        return u"warning: "_s + WarningWatch::warning();
    if (!probe.window->isVisible())
        return u"the window is gone"_s;
    for (const QStackedWidget *stack : {probe.root(), probe.center()}) {
        if (const QString fault = faultOfStack(stack); !fault.isEmpty())
            return fault;
    }
    for (const char16_t *name : {u"dmList", u"messageList"}) {
        const auto *list = probe.the<QListWidget>(QString::fromUtf16(name));
        if (const QString fault = faultOfEntries(list); !fault.isEmpty())
            return fault;
    }
    if (!probe.onMainPage() && keys.holdsAnything())
        return u"keys are kept although nobody is signed in"_s;
    return faultOfWindows();
}

} // namespace tideloft::tests
