// The client's start, its memory and its rest on the sign-in page, each beside the floor program.
//
// Run it with QT_QPA_PLATFORM=offscreen or under a virtual display; both programs get the same.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/measured_process.h"
#include "bench/paired_times.h"

#include <QCoreApplication>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace tideloft::bench;

namespace
{

constexpr int startRounds = 21;
constexpr int memoryRounds = 5;
constexpr auto settlingTime = 2000;
constexpr auto idleTime = 20'000;

struct Programs {
    QString floor = QCoreApplication::applicationDirPath() + u"/bench_floor_program"_s;
    QString textFloor = QCoreApplication::applicationDirPath() + u"/bench_text_floor_program"_s;
    QString client = QCoreApplication::applicationDirPath() + u"/bench_client"_s;
};

struct Start {
    double wall;
    double processor;
};

Start startOf(const QString &program, const BenchHome &home)
{
    const MeasuredProcess process(program, {u"--until-frame"_s}, home);
    return {process.millisecondsToFrame(), process.processorMillisecondsToFrame()};
}

double memoryOf(const QString &program, const BenchHome &home)
{
    const MeasuredProcess process(program, {}, home);
    QThread::msleep(settlingTime);
    return process.proportionalMemory();
}

/// Collects pairs and tells the medians.
struct Pairs {
    QList<double> floors;
    QList<double> ours;
    QList<double> ratios;

    void add(double floor, double our)
    {
        floors << floor;
        ours << our;
        ratios << our / floor;
    }
    void report(const QByteArray &figure, double target, const QByteArray &unit) const
    {
        reportRatio(figure, medianOf(ratios), target, both(unit));
    }
    void explain(const QByteArray &figure, const QByteArray &unit) const
    {
        inform(figure, QByteArray::number(medianOf(ratios), 'f', 2) + " (" + both(unit) + ')');
    }

private:
    [[nodiscard]] QByteArray both(const QByteArray &unit) const
    {
        return QByteArray::number(medianOf(ours), 'f', 1) + unit + ", floor "
               + QByteArray::number(medianOf(floors), 'f', 1) + unit;
    }
};

void measureStart(const Programs &programs, const BenchHome &home, const QByteArray &platform)
{
    startOf(programs.floor, home); // both are on disk and in memory from here on
    startOf(programs.textFloor, home);
    startOf(programs.client, home);
    Pairs wall;
    Pairs processor;
    Pairs text;
    for (int round = 0; round < startRounds; ++round) {
        const Start floor = startOf(programs.floor, home);
        const Start textFloor = startOf(programs.textFloor, home);
        const Start client = startOf(programs.client, home);
        wall.add(floor.wall, client.wall);
        processor.add(floor.processor, client.processor);
        text.add(textFloor.processor, client.processor);
    }
    wall.report("start to first painted sign-in page vs floor program, " + platform, 1.6, " ms");
    processor.report("the same in processor time, " + platform, 1.6, " ms");
    text.report("the same in processor time vs a floor that shows text and has TLS, " + platform, 1.35,
                " ms");
}

void measureMemory(const Programs &programs, const BenchHome &home, const QByteArray &platform)
{
    Pairs memory;
    Pairs text;
    for (int round = 0; round < memoryRounds; ++round) {
        const double client = memoryOf(programs.client, home) / 1024;
        memory.add(memoryOf(programs.floor, home) / 1024, client);
        text.add(memoryOf(programs.textFloor, home) / 1024, client);
    }
    memory.report("proportional memory of the idle sign-in page vs floor program, " + platform, 1.35, " MiB");
    text.explain("the same vs a floor that shows text and has TLS, " + platform, " MiB");
}

// It settles for as long as the cursor blinks after the last thing that a person did.
void measureRest(const Programs &programs, const BenchHome &home, const QByteArray &platform)
{
    QList<double> ticks;
    QList<double> times;
    for (int round = 0; round < memoryRounds; ++round) {
        const MeasuredProcess client(programs.client, {}, home);
        QThread::msleep(12'000);
        const qlonglong ticksBefore = client.ticks();
        const double timeBefore = client.processorMilliseconds();
        QThread::msleep(idleTime);
        ticks << static_cast<double>(client.ticks() - ticksBefore);
        times << client.processorMilliseconds() - timeBefore;
    }
    report("CPU ticks of the idle sign-in page in 20 s, " + platform,
           QByteArray::number(medianOf(ticks), 'f', 0) + " (" + QByteArray::number(medianOf(times), 'f', 3)
               + " ms of the main thread)",
           "0", medianOf(ticks) == 0);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray platform = qEnvironmentVariable("QT_QPA_PLATFORM", u"xcb"_s).toUtf8();
    const Programs programs;
    const BenchHome home;
    measureStart(programs, home, platform);
    measureMemory(programs, home, platform);
    measureRest(programs, home, platform);
    return 0;
}
