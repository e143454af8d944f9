// Linked into a program beside its own main(): says when its first frame stands, and ends it if asked to.
//
// Takes its orders from the command line, where the client ignores what it does not know:
//   --until-frame  end after the first frame
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;

namespace
{

double millisecondsOn(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The moment on the clock that all processes share, then the processor time since the process began.
void report()
{
    std::printf("frame %.3f %.3f\n", millisecondsOn(CLOCK_MONOTONIC),
                millisecondsOn(CLOCK_PROCESS_CPUTIME_ID));
    std::fflush(stdout);
    if (QCoreApplication::arguments().contains(u"--until-frame"_s))
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
}

// A window paints all its widgets, and hands the result to the platform, while it handles the event by which
// the platform shows it. That event is delivered from here, so that its end is the moment of the frame.
class FirstFrame : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (delivering) {
            painted = painted || (watched->isWidgetType() && event->type() == QEvent::Paint);
            return false;
        }
        if (!watched->isWindowType() || (event->type() != QEvent::Expose && event->type() != QEvent::Paint))
            return false;
        delivering = true;
        QCoreApplication::sendEvent(watched, event);
        delivering = false;
        if (painted) {
            QCoreApplication::instance()->removeEventFilter(this);
            report();
        }
        return true;
    }

private:
    bool delivering = false;
    bool painted = false;
};

void watchFirstFrame()
{
    QCoreApplication::instance()->installEventFilter(new FirstFrame(QCoreApplication::instance()));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watchFirstFrame)
