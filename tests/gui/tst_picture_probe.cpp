// Hands for the file dialog.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

void prepareForFileDialogs()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    placeKeyPair();
}

PictureFolder::PictureFolder() = default;

QString PictureFolder::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(name));
    return file.fileName();
}

QString PictureFolder::writeOfSize(const QString &name, qint64 size) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
        qFatal("%s cannot be made", qPrintable(name));
    return file.fileName();
}

QString PictureFolder::writeWidePicture(const QString &name) const
{
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(Qt::green);
    QPainter painter(&picture);
    painter.fillRect(0, 0, 50, 100, Qt::red);
    painter.fillRect(150, 0, 50, 100, Qt::blue);
    painter.end();
    if (!picture.save(path(name)))
        qFatal("%s cannot be saved", qPrintable(name));
    return path(name);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void typeInto(const QWidget &window, const QString &text)
{
    for (const char32_t character : text.toUcs4())
        QTest::sendKeyEvent(QTest::Click, window.windowHandle(), Qt::Key_unknown,
                            QString::fromUcs4(&character, 1), Qt::NoModifier);
}

void press(const QWidget &window, Qt::Key key)
{
    QTest::keyClick(window.windowHandle(), key);
}

bool choosePath(const QFileDialog &dialog, const QString &path)
{
    const Person<QMessageBox> reader([](const QMessageBox &refusal) { press(refusal, Qt::Key_Return); });
    auto *edit = only<QLineEdit>(dialog, u"fileNameEdit"_s);
    edit->setCompleter(nullptr); // where no window manager runs, its popup takes the keyboard for good
    edit->setFocus();
    edit->selectAll();
    typeInto(dialog, path);
    press(dialog, Qt::Key_Return);
    return !reader.hasAnswered();
}

bool chooseAvatar(const SettingsProbe &probe, const QString &path)
{
    const Person<QFileDialog> person([&](const QFileDialog &dialog) { choosePath(dialog, path); });
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    return person.hasAnswered();
}

QMessageBox *waitForMessage()
{
    QMessageBox *box = nullptr;
    const auto shown = [&] {
        box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        return box && box->isVisible();
    };
    return waitFor(shown, patience()) ? box : nullptr;
}

qsizetype messageCount()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::count_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && qobject_cast<const QMessageBox *>(window);
    });
}

} // namespace tideloft::tests
