// Starting a program, and reading what the kernel says of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/measured_process.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

#include <ctime>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

double monotonicMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

QByteArray fileContent(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read.", qPrintable(path));
    return file.readAll();
}

} // namespace

BenchHome::BenchHome()
{
    QFile settings(directory.filePath(u"TideLoft/TideLoft.conf"_s));
    if (!QDir(directory.path()).mkdir(u"TideLoft"_s) || !settings.open(QIODevice::WriteOnly)
        || settings.write("[General]\nlanguage=en\n") < 0)
        qFatal("The home of the bench cannot be made.");
}

QProcessEnvironment BenchHome::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name :
         {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        environment.insert(name, directory.path());
    return environment;
}

MeasuredProcess::MeasuredProcess(const QString &program, const QStringList &arguments, const BenchHome &home)
{
    process.setProcessEnvironment(home.environment());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const double before = monotonicMilliseconds();
    process.start(program, arguments);
    while (!process.canReadLine()) {
        if (!process.waitForReadyRead(60'000))
            qFatal("%s shows no frame.", qPrintable(program));
    }
    const QList<QByteArray> words = process.readLine().trimmed().split(' ');
    if (words.size() != 3 || words.first() != "frame")
        qFatal("%s says something else than when its frame stands.", qPrintable(program));
    toFrame = words[1].toDouble() - before;
    processorTime = words[2].toDouble();
}

MeasuredProcess::~MeasuredProcess()
{
    process.terminate();
    process.waitForFinished();
}

QByteArray MeasuredProcess::status(const char *file) const
{
    return fileContent(u"/proc/%1/%2"_s.arg(process.processId()).arg(QLatin1StringView(file)));
}

double MeasuredProcess::proportionalMemory() const
{
    for (const QByteArray &line : status("smaps_rollup").split('\n')) {
        if (line.startsWith("Pss:"))
            return line.simplified().split(' ').at(1).toDouble();
    }
    qFatal("The kernel does not tell the proportional memory.");
}

// Behind the name in brackets, which may hold blanks, utime and stime are the 12th and 13th word.
qlonglong MeasuredProcess::ticks() const
{
    const QByteArray text = status("stat");
    const QList<QByteArray> words = text.mid(text.lastIndexOf(')') + 2).split(' ');
    return words.at(11).toLongLong() + words.at(12).toLongLong();
}

double MeasuredProcess::processorMilliseconds() const
{
    return status("schedstat").split(' ').first().toDouble() / 1e6;
}

} // namespace tideloft::bench
