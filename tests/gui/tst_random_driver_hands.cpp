// Choosing what to do, and doing it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_random_driver_hands.h"

#include "tests/support/popups.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QWidget *frontOf(QWidget *window)
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup;
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : window;
}

// Where a click may change something comes first: of all the widgets most are labels and frames.
QList<QWidget *> targetsIn(const QWidget *front, bool onlyUseful)
{
    QList<QWidget *> targets;
    for (auto *widget : front->findChildren<QWidget *>()) {
        const bool useful = qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLineEdit *>(widget)
                            || qobject_cast<QComboBox *>(widget) || widget->objectName() == u"sideFooter"
                            || qobject_cast<QListWidget *>(widget->parentWidget());
        if (widget->isVisible() && widget->window() == front && (useful || !onlyUseful)
            && !widget->visibleRegion().isEmpty())
            targets.append(widget);
    }
    return targets;
}

} // namespace

QString RandomHands::picture()
{
    const QString path = folder.filePath(u"picture.png"_s);
    if (!QFile::exists(path)) {
        QImage image(60, 30, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(path);
    }
    return path;
}

bool RandomHands::closeFront()
{
    QWidget *front = frontOf(nullptr);
    if (!front)
        return false;
    if (auto *dialog = qobject_cast<QDialog *>(front))
        dialog->reject();
    else
        front->close();
    return true;
}

QString RandomHands::act()
{
    return choose.oneIn(3) ? actOnService() : actOnWindow();
}

QString RandomHands::actOnService()
{
    switch (choose.below(12)) {
    case 0:
        answers.holdAtRandom();
        return u"hold"_s;
    case 1:
    case 2:
        answers.releaseAll();
        return u"release"_s;
    case 3:
    case 4:
    case 5:
        if (probe.refreshTimer()->isActive())
            callSlot(*probe.window, "refreshData");
        return u"tick"_s;
    default:
        answers.answerAtRandom();
        return u"answer"_s;
    }
}

QString RandomHands::actOnWindow()
{
    QWidget *front = frontOf(probe.window.get());
    if (choose.oneIn(60)) {
        probe.window->logOut(); // whatever is open
        return u"log out"_s;
    }
    if (choose.oneIn(40))
        return changeLook();
    if (choose.oneIn(20))
        return scroll(choose.oneIn(2) ? u"dmList"_s : u"messageList"_s);
    if (front != probe.window.get() || !choose.oneIn(4))
        return useFront(front);
    if (!probe.onMainPage())
        return signIn();
    return choose.oneIn(4) ? openSomebody() : writeMessage();
}

QString RandomHands::useFront(QWidget *front)
{
    if (auto *files = qobject_cast<QFileDialog *>(front)) { // nothing in it is clicked: it can delete files
        if (choose.oneIn(2)) {
            files->reject();
        } else {
            files->selectFile(choose.from(QStringList{picture(), u"/nothing/here.png"_s, u"/dev/zero"_s}));
            QMetaObject::invokeMethod(files, "accept");
        }
        return u"file dialog"_s;
    }
    if (auto *menu = qobject_cast<QMenu *>(front); menu && choose.oneIn(2) && !menu->actions().isEmpty()) {
        clickEntry(menu, choose.below(menu->actions().size()));
        return u"menu entry"_s;
    }
    switch (choose.below(5)) {
    case 0:
    case 1:
        return pressSomeKey(front);
    case 2:
        return typeSomething();
    default:
        return clickSomewhere(front);
    }
}

QString RandomHands::clickSomewhere(QWidget *front)
{
    const QList<QWidget *> targets = targetsIn(front, !choose.oneIn(4));
    if (targets.isEmpty() || !front->windowHandle())
        return u"nothing to click on"_s;
    const QWidget *target = choose.from(targets);
    const QRect seen = target->visibleRegion().boundingRect();
    const QPoint spot = seen.topLeft() + QPoint(choose.below(seen.width()), choose.below(seen.height()));
    const QString what =
        u"click on %1 %2"_s.arg(QString::fromLatin1(target->metaObject()->className()), target->objectName());
    clickAt(target, spot, choose.oneIn(10) ? Qt::RightButton : Qt::LeftButton);
    return what; // the target may be gone
}

QString RandomHands::pressSomeKey(QWidget *front)
{
    static const QList<Qt::Key> keys{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape,    Qt::Key_Tab,
                                     Qt::Key_Tab,    Qt::Key_Space, Qt::Key_Backtab,   Qt::Key_PageUp,
                                     Qt::Key_Up,     Qt::Key_Down,  Qt::Key_PageDown,  Qt::Key_Home,
                                     Qt::Key_End,    Qt::Key_Left,  Qt::Key_Backspace, Qt::Key_Menu,
                                     Qt::Key_A,      Qt::Key_F10,   Qt::Key_Delete,    Qt::Key_Right};
    const Qt::Key key = choose.from(keys);
    const Qt::KeyboardModifiers shift = choose.oneIn(5) ? Qt::ShiftModifier : Qt::NoModifier;
    if (const QPointer<QWindow> window = front->windowHandle()) {
        QTest::keyPress(window, key, shift);
        if (window) // a key that answers a box is let go when the box has gone
            QTest::keyRelease(window, key);
        if (window && shift != Qt::NoModifier)
            QTest::keyRelease(window, Qt::Key_Shift);
    }
    return u"key %1"_s.arg(key, 0, 16);
}

QString RandomHands::typeSomething()
{
    const QPointer<QWidget> keyboard = QApplication::focusWidget();
    if (!keyboard || qobject_cast<QFileDialog *>(keyboard->window()))
        return u"nowhere to type"_s;
    QGuiApplication::clipboard()->setText(answers.anyText());
    QTest::keyClick(keyboard, Qt::Key_V, Qt::ControlModifier);
    return u"paste"_s;
}

QString RandomHands::signIn()
{
    probe.username()->setText(choose.oneIn(4) ? answers.anyText() : u"alice"_s);
    probe.password()->setText(u"secret"_s);
    clickOnScreen(*probe.the<QWidget>(choose.oneIn(6) ? u"ghostButton"_s : u"primaryButton"_s));
    return u"sign in"_s;
}

QString RandomHands::openSomebody()
{
    const auto *list = probe.the<QListWidget>(choose.oneIn(3) ? u"searchResults"_s : u"dmList"_s);
    if (list->count() == 0 || !list->isVisible())
        return u"nobody to open"_s;
    const QPoint spot = list->visualItemRect(list->item(choose.below(list->count()))).center();
    if (list->viewport()->rect().contains(spot))
        clickAt(list->viewport(), spot);
    return u"open somebody"_s;
}

QString RandomHands::scroll(const QString &name)
{
    QScrollBar *bar = probe.the<QListWidget>(name)->verticalScrollBar();
    bar->setValue(choose.below(bar->maximum() + 1));
    return u"scroll "_s + name;
}

QString RandomHands::writeMessage()
{
    auto *input = probe.the<QLineEdit>(u"msgInput"_s);
    if (!input->isVisible())
        return u"nobody to write to"_s;
    if (!choose.oneIn(3))
        input->setText(answers.anyText());
    if (choose.oneIn(2))
        clickOnScreen(*probe.the<QWidget>(u"sendButton"_s));
    else
        QTest::keyClick(input, Qt::Key_Return);
    return u"send"_s;
}

QString RandomHands::changeLook()
{
    switch (choose.below(3)) {
    case 0:
        probe.window->setLanguageIndex(choose.below(2));
        return u"language"_s;
    case 1:
        probe.window->resize(800 + choose.below(800), 560 + choose.below(600));
        return u"size"_s;
    default:
        return chooseSettings();
    }
}

// Any button of the settings, whether it can be seen or not: themes, accents, and what opens boxes and
// dialogs.
QString RandomHands::chooseSettings()
{
    const QWidget *settings = probe.center()->widget(2);
    if (!settings)
        return u"no settings yet"_s;
    settings->findChild<QListWidget *>()->setCurrentRow(choose.below(8));
    choose.from(settings->findChildren<QAbstractButton *>())->click();
    return u"settings"_s;
}

} // namespace tideloft::tests
