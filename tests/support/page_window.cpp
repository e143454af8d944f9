// Showing a page and listening to it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/page_window.h"

#include "tests/support/patience.h"
#include "ui/style/theme.h"

#include <QApplication>
#include <QMetaMethod>
#include <QTest>

namespace tideloft::tests
{

PageWindow::PageWindow(QSize size)
{
    QApplication::setCursorFlashTime(0); // two pictures differ only if the page does
    resize(size);
    wearTheme(true);
}

PageWindow::~PageWindow() = default;

void PageWindow::showPage(QWidget *page)
{
    setCentralWidget(page);
    const QMetaObject *meta = page->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == QMetaMethod::Signal)
            spies.push_back(std::make_unique<QSignalSpy>(page, meta->method(i)));
    }
    show();
    activateWindow();
    if (!QTest::qWaitForWindowActive(this, patience()))
        qFatal("The window does not come up");
}

void PageWindow::wearTheme(bool dark)
{
    setStyleSheet(ui::Theme{.isDark = dark}.styleSheet());
}

qsizetype PageWindow::sentSignals() const
{
    qsizetype sent = 0;
    for (const auto &spy : spies)
        sent += spy->size();
    return sent;
}

} // namespace tideloft::tests
