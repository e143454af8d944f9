// A window on screen with one page of the program in it, and nothing else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QSignalSpy>

#include <memory>
#include <vector>

namespace tideloft::tests
{

/// Wears the dark style sheet, so that sizes and colours are those of the program.
class PageWindow : public QMainWindow
{
public:
    explicit PageWindow(QSize size);
    ~PageWindow() override;

    /// Shows PAGE, a child of this window, and waits until the window is active.
    void showPage(QWidget *page);
    void wearTheme(bool dark);
    /// How many signals of its own the page has sent: a page that sends none makes the program do nothing.
    qsizetype sentSignals() const;

private:
    std::vector<std::unique_ptr<QSignalSpy>> spies;
};

} // namespace tideloft::tests
