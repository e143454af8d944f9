// How much processor time a conversation full of links takes while it is only shown.
//
// Run it with QT_QPA_PLATFORM=offscreen or under a virtual display. The service is in this process.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"

#include "app/resting_cursor.h"
#include "bench/figures.h"
#include "tests/support/test_home.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

#include <ctime>
#include <sys/times.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tideloft;

namespace
{

constexpr int linkCount = 60;
constexpr auto settlingTime = 15s; // the text cursor comes to rest before
constexpr auto restingTime = 20s;
const QString peer = u"bob"_s;

// From a line's width to many lines of letters without a place to break, and one as long as a small book.
QJsonArray links()
{
    QJsonArray items;
    for (int i = 0; i < linkCount; ++i)
        items.append(
            tests::plainMessage(peer, u"Look: https://example.org/"_s + QString(40 * (i + 1), u'x')));
    items.append(tests::plainMessage(peer, QString(100'000, u'y')));
    return items;
}

// User and system time of all threads so far.
qlonglong ticksNow()
{
    tms used{};
    times(&used);
    return used.tms_utime + used.tms_stime;
}

double processorMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void rest(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"TideLoft"_s);
    QCoreApplication::setOrganizationName(u"TideLoft"_s);
    const app::RestingCursor cursor;
    tests::ChatWindow chat;
    if (!chat.signIn() || !chat.open(peer, links()))
        qFatal("The conversation did not open.");
    rest(settlingTime);
    const qlonglong ticksBefore = ticksNow();
    const double timeBefore = processorMilliseconds();
    rest(restingTime);
    const qlonglong ticks = ticksNow() - ticksBefore;
    bench::report("CPU ticks of a conversation of 60 links at rest in 20 s, between two refreshes, "
                      + QGuiApplication::platformName().toUtf8(),
                  QByteArray::number(ticks) + " ("
                      + QByteArray::number(processorMilliseconds() - timeBefore, 'f', 3)
                      + " ms of all threads)",
                  "0", ticks == 0);
    return 0;
}
