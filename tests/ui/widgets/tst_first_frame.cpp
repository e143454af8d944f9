// What waits until a window has drawn its first frame.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/first_frame.h"

#include <QApplication>
#include <QMainWindow>
#include <QTest>

using tideloft::ui::afterFirstFrame;

namespace
{

/// Counts how often it is drawn.
class Drawn : public QMainWindow
{
public:
    int frames = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++frames; }
};

} // namespace

class TestFirstFrame : public QObject
{
    Q_OBJECT

private slots:
    void waitsForTheFirstFrame();
    void isDoneOnce();
    void partOfAWindowWaitsForTheWindow();
    void isDroppedWithItsWidget();
};

void TestFirstFrame::waitsForTheFirstFrame()
{
    Drawn window;
    int framesBefore = -1;
    afterFirstFrame(&window, [&] { framesBefore = window.frames; });
    QCoreApplication::processEvents();
    QCOMPARE(framesBefore, -1);
    window.show();
    QTRY_VERIFY(framesBefore >= 1);
}

void TestFirstFrame::isDoneOnce()
{
    Drawn window;
    int done = 0;
    afterFirstFrame(&window, [&] { ++done; });
    window.show();
    QTRY_COMPARE(done, 1);
    const int frames = window.frames;
    window.update();
    QTRY_VERIFY(window.frames > frames);
    QCoreApplication::processEvents();
    QCOMPARE(done, 1);
}

void TestFirstFrame::partOfAWindowWaitsForTheWindow()
{
    Drawn window;
    auto *hidden = new QWidget(&window);
    hidden->hide();
    bool done = false;
    afterFirstFrame(hidden, [&] { done = true; });
    window.show();
    QTRY_VERIFY(done);
}

void TestFirstFrame::isDroppedWithItsWidget()
{
    Drawn window;
    auto part = std::make_unique<QWidget>(&window);
    bool done = false;
    afterFirstFrame(part.get(), [&] { done = true; });
    part.reset();
    bool later = false;
    afterFirstFrame(&window, [&] { later = true; });
    window.show();
    QTRY_VERIFY(later);
    QVERIFY(!done);
}

TIDELOFT_GUI_TEST_MAIN(TestFirstFrame)
#include "tst_first_frame.moc"
