// Catching menus and dialogs inside their own event loops.
#include "tests/gui/tst_popups.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QWindow>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

// Asks again and again: the event that brings it up may still be on its way at the first time-out.
template <typename Find, typename Use>
bool catchWhile(const std::function<void()> &open, const Find &find, const Use &use)
{
    bool seen = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        auto *popup = find();
        if (seen || !popup)
            return;
        seen = true;
        watch.stop();
        use(popup);
        popup->close();
    });
    watch.start(0);
    open();
    return seen;
}

} // namespace

bool withMenu(const std::function<void()> &open, const std::function<void(QMenu *)> &use)
{
    return catchWhile(
        open, [] { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }, use);
}

bool withDialog(const std::function<void()> &open, const std::function<void(QDialog &)> &use)
{
    return catchWhile(
        open, [] { return qobject_cast<QDialog *>(QApplication::activeModalWidget()); },
        [&use](QDialog *dialog) {
            // The window is active a moment before one of its widgets has the keyboard.
            const bool up = QTest::qWaitForWindowActive(dialog) && QTest::qWaitFor([dialog] {
                                return dialog->isAncestorOf(QApplication::focusWidget());
                            });
            if (!up)
                qFatal("The dialog does not come up");
            use(*dialog);
        });
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

void press(const QWidget *widget, QPoint spot, Qt::MouseButton button)
{
    QTest::mousePress(widget->window()->windowHandle(), button, {}, widget->mapTo(widget->window(), spot));
}

void clickAt(const QWidget *widget, QPoint spot, Qt::MouseButton button)
{
    QTest::mouseClick(widget->window()->windowHandle(), button, {}, widget->mapTo(widget->window(), spot));
}

void typeText(const QString &text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

} // namespace tideloft::tests
