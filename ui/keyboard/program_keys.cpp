// Quitting, closing, searching and restarting by the keyboard.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/program_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QShortcut>
#include <QWidget>

namespace tideloft::ui
{

void addProgramKeys(QWidget *window)
{
    const auto *quit = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), window);
    QObject::connect(quit, &QShortcut::activated, QCoreApplication::instance(), &QCoreApplication::quit);
    const auto *close = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), window);
    QObject::connect(close, &QShortcut::activated, window, &QWidget::close);
}

void addSearchKey(QWidget *page, const std::function<void()> &find)
{
    const auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), page);
    QObject::connect(shortcut, &QShortcut::activated, page, find);
}

bool isRestartKey(const QKeyEvent &press)
{
    return press.key() == Qt::Key_R && press.modifiers() == Qt::ControlModifier && !press.isAutoRepeat();
}

// The list of arguments begins with the program's own path: the new process gets that path a second time, as
// its first argument.
void restartProgram()
{
    QCoreApplication::quit();
    QProcess::startDetached(QCoreApplication::applicationFilePath(), QCoreApplication::arguments(), {});
}

} // namespace tideloft::ui
