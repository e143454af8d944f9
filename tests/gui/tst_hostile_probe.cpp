// Looking for markup, growth, opened files and connections.
#include "tests/gui/tst_hostile_probe.h"

#include "tests/faults/open_watch.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

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

QString markupIn(const QWidget *top)
{
    for (const auto *label : top->findChildren<QLabel *>()) {
        if (label->textFormat() != Qt::PlainText && Qt::mightBeRichText(label->text()))
            return u"markup in "_s + label->objectName() + label->text().left(80);
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

QString HostileProbe::trouble()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    window->repaint();
    for (const QWidget *top : QApplication::topLevelWidgets()) {
        if (const QString markup = markupIn(top); !markup.isEmpty())
            return markup;
    }
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
    if (!QTest::qWaitFor([&] { return box() != nullptr; }))
        return {};
    const QString text = box()->textFormat() == Qt::PlainText ? box()->text() : u"(markup)"_s;
    box()->repaint();
    if (box()->height() > 3'000) // 4,000 wide letters need 2,000 px
        return u"(high without measure)"_s;
    box()->accept();
    return text;
}

} // namespace tideloft::tests
