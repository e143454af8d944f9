// A program under measurement: started with a home of its own, looked at through /proc, ended.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tideloft::bench
{

/// Where a program keeps its data and settings; the language is chosen there, so that no question comes.
class BenchHome
{
public:
    BenchHome();
    [[nodiscard]] QProcessEnvironment environment() const;

private:
    QTemporaryDir directory;
};

/// One of the programs that say when their first frame stands. Ends the bench if the program does.
class MeasuredProcess
{
public:
    MeasuredProcess(const QString &program, const QStringList &arguments, const BenchHome &home);
    Q_DISABLE_COPY_MOVE(MeasuredProcess)
    ~MeasuredProcess();

    [[nodiscard]] double millisecondsToFrame() const { return toFrame; }
    [[nodiscard]] double processorMillisecondsToFrame() const { return processorTime; }
    /// Proportional set size, in kB.
    [[nodiscard]] double proportionalMemory() const;
    /// User and system time so far, in clock ticks.
    [[nodiscard]] qlonglong ticks() const;
    /// User and system time of the main thread so far, in ms, exact to the scheduler's count.
    [[nodiscard]] double processorMilliseconds() const;

private:
    [[nodiscard]] QByteArray status(const char *file) const;

    QProcess process;
    double toFrame = 0;
    double processorTime = 0;
};

} // namespace tideloft::bench
