// Looking for markup, growth, opened files and connections.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_hostile_probe.h"

#include "tests/faults/open_watch.h"
#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

QString tipOf(QWidget *widget)
{
    QHelpEvent event(QEvent::ToolTip, {5, 5}, widget->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(widget, &event);
    const QString tip = QToolTip::text();
    QToolTip::hideText();
    return tip;
}

namespace
{

// A picture that labels could show, so that it is missed only where nobody looks for it.
QString plantPicture(const QTemporaryDir &directory)
{
    const QString path = directory.filePath(u"planted.png"_s);
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    if (!picture.save(path))
        qFatal("No picture could be written");
    return path;
}

/// What the toolkit opens for itself: fonts, icons, plugins, time zones, and the service's address.
bool isToolkits(const QString &path)
{
    static const QStringList own{u"/usr/share/fonts/"_s,
                                 u"/usr/share/icons/"_s,
                                 u"/usr/share/fontconfig/"_s,
                                 u"/usr/share/zoneinfo"_s,
                                 u"/usr/share/X11/"_s,
                                 u"/usr/share/pixmaps"_s,
                                 u"/usr/share/mime/"_s,
                                 u"/usr/local/share/"_s,
                                 u"/var/cache/fontconfig/"_s,
                                 u"/etc/fonts/"_s,
                                 u"/etc/localtime"_s,
                                 u"/etc/ssl/"_s,
                                 u"/usr/lib/"_s,
                                 u"/lib/"_s,
                                 u"/etc/ld.so"_s,
                                 u"/proc/self/maps"_s,
                                 u"/sys/devices/system/"_s};
    for (const QString &prefix : own) {
        if (path.startsWith(prefix))
            return true;
    }
    return path.startsWith(qEnvironmentVariable("XDG_DATA_HOME")); // the test's home: key files and caches
}

/// What stands between quotes in a complaint.
QString described(const QWidget *widget, const QString &text)
{
    return QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName() + u": "_s
           + text.left(80);
}

/// Buttons and menus take a "&" for the mark of a key unless it is doubled.
bool hasMnemonic(QString text)
{
    return text.remove(u"&&"_s).contains(u'&');
}

QString markupIn(QWidget *widget)
{
    const bool isTip = widget->inherits("QTipLabel"); // looked at where it belongs, below
    if (const auto *label = qobject_cast<QLabel *>(widget); label && !isTip) {
        if (label->textFormat() != Qt::PlainText && Qt::mightBeRichText(label->text()))
            return u"markup in "_s + described(label, label->text());
    }
    if (const auto *button = qobject_cast<QAbstractButton *>(widget)) {
        if (hasMnemonic(button->text()))
            return u"mnemonic in "_s + described(button, button->text());
    }
    for (const QAction *action : widget->actions()) {
        if (hasMnemonic(action->text()))
            return u"mnemonic in "_s + described(widget, action->text());
    }
    const QString tip = widget->toolTip();
    if (Qt::mightBeRichText(tip) && tipOf(widget) == tip)
        return u"markup in the tip of "_s + described(widget, tip);
    return {};
}

/// The texts of WIDGET that are the program's own: nothing from outside belongs into them.
QStringList ownTexts(const QWidget *widget)
{
    QStringList texts{widget->windowTitle(), widget->whatsThis(), widget->statusTip()};
    for (const QAction *action : widget->actions())
        texts.append({action->text(), action->toolTip(), action->statusTip()});
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        for (int i = 0; i < combo->count(); ++i)
            texts.append({combo->itemText(i), combo->itemData(i, Qt::ToolTipRole).toString()});
    }
    if (const auto *list = qobject_cast<const QListWidget *>(widget)) {
        for (int i = 0; i < list->count(); ++i)
            texts.append(list->item(i)->toolTip()); // shown without a question about its format
    }
    texts.append(widget->property("placeholderText").toString());
    texts.removeAll({});
    return texts;
}

QString outsiderIn(const QWidget *widget, const QList<HostileText> &texts)
{
    for (const QString &own : ownTexts(widget)) {
        for (const HostileText &hostile : texts) {
            if (own.contains(hostile.text))
                return u"a text from outside in "_s + described(widget, own);
        }
    }
    return {};
}

} // namespace

HostileProbe::HostileProbe(ui::Language language)
    : SettingsProbe(language),
      all(hostileTexts(plantPicture(directory))),
      windowSize(window->size())
{
    refreshTimer()->stop();
    takeTouched();
}

QString HostileProbe::touched() const
{
    const QString connected = u"connect "_s + service.url().section(u"//"_s, 1);
    for (const std::string &line : takeTouched()) {
        const QString path = QString::fromStdString(line);
        if (path != connected && !isToolkits(path))
            return u"touched "_s + path;
    }
    return {};
}

QString HostileProbe::badText() const
{
    const QWidgetList widgets = QApplication::allWidgets();
    // A tip goes when the next one comes.
    for (const QPointer<QWidget> &widget : QList<QPointer<QWidget>>(widgets.begin(), widgets.end())) {
        if (!widget)
            continue;
        const QString markup = markupIn(widget);
        const QString wrong = markup.isEmpty() ? outsiderIn(widget, all) : markup;
        if (!wrong.isEmpty())
            return wrong;
    }
    return {};
}

QString HostileProbe::trouble()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    window->repaint();
    if (const QString text = badText(); !text.isEmpty())
        return text;
    for (const auto *list : window->findChildren<QListWidget *>()) {
        if (list->isVisible() && list->horizontalScrollBar()->maximum() > 0)
            return list->objectName() + u" is too narrow"_s;
    }
    const QSize needed = window->minimumSizeHint();
    if (window->size() != windowSize || needed.expandedTo(window->minimumSize()) != window->minimumSize())
        return u"the window is %1 x %2, at least %3 x %4"_s.arg(window->width())
            .arg(window->height())
            .arg(needed.width())
            .arg(needed.height());
    return touched();
}

QString HostileProbe::boxText() const
{
    const auto box = [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); };
    if (!waitFor([&] { return box() != nullptr; }, patience()))
        return {};
    const QString text = box()->textFormat() == Qt::PlainText ? box()->text() : u"(markup)"_s;
    box()->repaint();
    const QSize half = box()->screen()->availableSize() / 2;
    if (box()->size().expandedTo(half) != half)
        return u"(larger than half the screen)"_s;
    box()->accept();
    return text;
}

} // namespace tideloft::tests
